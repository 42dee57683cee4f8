#pragma once

#include <string>

/// A fast-import stream of a history as a large project has it, the same with every call: many topic branches at once that live
/// from a few commits to thousands, trees of subsystems, maintenance branches and forks from old releases, merges of up to twelve
/// branches, several roots, whole branches of one second (a rebase), and a few wrong clocks. `commits` is about their number.
std::string busyHistory(int commits);
