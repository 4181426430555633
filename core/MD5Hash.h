#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/base/Export.h"

/// Fingerprints of data and texts: the MD5 message digest of RFC 1321 in one call, and a short form
/// of it. They tell whether something has changed by accident; they protect nothing.
///
/// All functions return 1 on success. Lengths are in bytes; 2 to the 31st and more fails (0), and
/// so does a null pointer to data that is not empty, to a text or to the result. A text is the
/// bytes before its NUL. From 512 MiB on the digest differs from the standard one: the message ends
/// in its length in bits as a number of 32 bits. Nothing is allocated; any thread may call.
class TESSALINK_API MD5Hash {
public:
    /// The first length that is refused, in bytes.
    static constexpr std::uint64_t cTooLong = std::uint64_t{1} << 31;

    MD5Hash& operator=(const MD5Hash&) = default;

    /// The state words A, B, C, D. On failure they are left as they were. (An array of `unsigned
    /// long` is one of 64-bit values and gets the bytes of the digest.)
    static int GetHash(const unsigned char* data, std::uint64_t length, std::uint32_t* words);
    /// The 16 bytes of the digest in their standard order. On failure they are zero.
    static int GetHash(const unsigned char* data, std::uint64_t length, unsigned char* digest);
    /// The same 16 bytes, as they lie in two 64-bit values.
    static int GetHash(const unsigned char* data, std::uint64_t length, std::uint64_t* digest);
    /// The sum A + B + C + D modulo 2 to the 32nd; 0 on failure.
    static int GetShortHash(const unsigned char* data, std::uint64_t length, std::uint32_t* hash);

    static int GetHash(const char* text, std::uint32_t* words);
    static int GetHash(const char* text, unsigned char* digest);
    static int GetHash(const char* text, std::uint64_t* digest);
    static int GetShortHash(const char* text, std::uint32_t* hash);
};
