#pragma once

#include "common/cmString.h"

/// The rules that a path follows. All functions here are pure text, so each platform can apply the rules of both.
enum class cmPathStyle { posix, windows };

#if defined(_WIN32)
inline constexpr cmPathStyle cmNativePathStyle = cmPathStyle::windows;
#else
inline constexpr cmPathStyle cmNativePathStyle = cmPathStyle::posix;
#endif

char cmPathSeparator(cmPathStyle style = cmNativePathStyle);
/// Whether `c` is the separator or, on Windows, a slash.
bool cmIsPathSeparator(char c, cmPathStyle style = cmNativePathStyle);
/// On Windows, `path` with backslashes in place of slashes; elsewhere `path` itself.
cmStringT cmNativeSeparators(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// The same in place.
void cmUseNativeSeparators(cmStringT& path, cmPathStyle style = cmNativePathStyle);
/// `path` without one trailing separator. A root ("/", "C:\") keeps it.
cmROStringT cmWithoutTrailingSeparator(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// The part of `path` before its last separator. A root keeps its separator. Empty for a bare name.
cmROStringT cmDirectoryOf(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// The part of `path` behind its last separator.
cmROStringT cmFileNameOf(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// `path` without the Windows prefix `\\?\`, and with `\\` in place of `\\?\UNC\`; in native separators. Elsewhere the path
/// itself.
cmStringT cmWithoutVerbatimPrefix(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// Whether `path` starts at a root: "/a", "C:\a", "\\server\share".
bool cmIsAbsolutePath(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// Whether `path` is on a server: on Windows, when it begins with two separators of either kind.
bool cmIsNetworkPath(cmROStringT path, cmPathStyle style = cmNativePathStyle);
/// `directory` and `name` with a separator between them, unless `directory` is empty or ends with one.
cmStringT cmJoinPath(cmROStringT directory, cmROStringT name, cmPathStyle style = cmNativePathStyle);
/// Whether two paths in native separators are equal: without ASCII case on Windows, byte for byte elsewhere.
bool cmSamePath(cmROStringT a, cmROStringT b, cmPathStyle style = cmNativePathStyle);
/// Whether `path` is `directory` or lies below it, both in native separators. If so, `relative` is the rest without its leading
/// separator (empty for `directory` itself); otherwise it is unchanged. Nothing is in an empty directory.
bool cmRelativePath(cmROStringT path, cmROStringT directory, cmROStringT& relative, cmPathStyle style = cmNativePathStyle);
/// A key that is equal for paths of the same file: on Windows the path in native separators and lower-case ASCII letters,
/// elsewhere the path itself.
cmStringT cmFileNameKey(cmROStringT path, cmPathStyle style = cmNativePathStyle);
