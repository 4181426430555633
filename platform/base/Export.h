#pragma once

/// TESSALINK_API marks what a host program may use: every other symbol of the libraries is hidden.
/// TESSALINK_SHARED is set by the build when the libraries are shared objects.
#if defined(TESSALINK_SHARED) && defined(__GNUC__)
/// Marks what a host program may use.
#define TESSALINK_API __attribute__((visibility("default")))
#else
/// Marks what a host program may use.
#define TESSALINK_API
#endif
