#pragma once

// Clang checks these annotations at compile time (-Wthread-safety). They are empty for other compilers.
#if defined(__clang__)
#define CM_ANNOTATION(x) __attribute__((x))
#else
#define CM_ANNOTATION(x)
#endif

#define CM_CAPABILITY(name) CM_ANNOTATION(capability(name))
#define CM_SCOPED_CAPABILITY CM_ANNOTATION(scoped_lockable)
#define CM_GUARDED_BY(lock) CM_ANNOTATION(guarded_by(lock))
#define CM_PT_GUARDED_BY(lock) CM_ANNOTATION(pt_guarded_by(lock))
#define CM_REQUIRES(...) CM_ANNOTATION(requires_capability(__VA_ARGS__))
#define CM_EXCLUDES(...) CM_ANNOTATION(locks_excluded(__VA_ARGS__))
#define CM_ACQUIRE(...) CM_ANNOTATION(acquire_capability(__VA_ARGS__))
#define CM_RELEASE(...) CM_ANNOTATION(release_capability(__VA_ARGS__))
#define CM_NO_THREAD_SAFETY_ANALYSIS CM_ANNOTATION(no_thread_safety_analysis)
