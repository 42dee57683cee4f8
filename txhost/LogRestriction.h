#pragma once

#include <string>

/// Why git log cannot be asked for these arguments: they would change the form of its output, which the module reads, or write it
/// to a file, or a quote is open. Empty when it can.
std::string complaintOfRestriction(const std::string& arguments);
