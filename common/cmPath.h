#pragma once

#include "common/cmString.h"

/// Whose rules a path follows. The rules are pure text, so either platform can apply both.
enum class cmPathStyle { posix, windows };

#if defined(_WIN32)
inline constexpr cmPathStyle cmNativePathStyle = cmPathStyle::windows;
#else
inline constexpr cmPathStyle cmNativePathStyle = cmPathStyle::posix;
#endif

char cmPathSeparator(cmPathStyle style = cmNativePathStyle);
/// True for the separator; on Windows for the slash too.
bool cmIsPathSeparator(char c, cmPathStyle style = cmNativePathStyle);
/// On Windows every slash becomes a backslash; elsewhere the path as it is.
cmStringT cmNativeSeparators(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// `path` without one trailing separator; a root ("/", "C:\") keeps its own.
cmROStringT cmWithoutTrailingSeparator(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// The directory part of `path`, up to its last separator and without it; a root keeps its own. Empty for a bare name.
cmROStringT cmDirectoryOf(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// What follows the last separator.
cmROStringT cmFileNameOf(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// `path` without the Windows prefix `\\?\`, and with `\\` in place of `\\?\UNC\`; in native separators. Elsewhere the path
/// itself.
cmStringT cmWithoutVerbatimPrefix(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// From the root: "/a", "C:\a", "\\server\share".
bool cmIsAbsolutePath(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// `directory` and `name` with one separator between them.
cmStringT cmJoinPath(cmROStringT directory, cmROStringT name, cmPathStyle style = cmNativePathStyle);
/// Whether two paths, both in native separators, name the same entry: without ASCII case on Windows, to the byte elsewhere.
bool cmSamePath(cmROStringT a, cmROStringT b, cmPathStyle style = cmNativePathStyle);
/// Whether `path` is `directory` or lies below it, both in native separators. When it does, `relative` is the
/// rest without its leading separator (empty for `directory` itself); otherwise `relative` is left alone.
bool cmRelativePath(cmROStringT path, cmROStringT directory, cmROStringT& relative, cmPathStyle style = cmNativePathStyle);
/// What paths have in common that name the same file, for use as a key: on Windows native separators and lower-case ASCII
/// letters, elsewhere the path itself.
cmStringT cmFileNameKey(cmROStringT path, cmPathStyle style = cmNativePathStyle);
