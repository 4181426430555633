// MD5 by the product and by the packaged libraries that this machine has, in turns in one process.
//
//     md5 long BYTES ROUNDS     one text of BYTES
//     md5 short BYTES ROUNDS    texts of BYTES, 100,000 in a round
//
// Writes "NAME NANOSECONDS" for each turn of each round, for one text. All digests must agree.

#if __has_include(<openssl/evp.h>)
#include <openssl/evp.h>
#define HAS_OPENSSL
#endif
#if __has_include(<nettle/md5.h>)
#include <nettle/md5.h>
#define HAS_NETTLE
#endif
#if __has_include(<gcrypt.h>)
#include <gcrypt.h>
#define HAS_GCRYPT
#endif

#include <array>
#include <cstring>

#include "benchmarks/comparison/programs/Timing.h"
#include "core/MD5Hash.h"

namespace {

using Digest = std::array<unsigned char, 16>;

struct Contestant {
    const char* name;
    void (*digest)(const unsigned char* data, std::size_t size, unsigned char* digest);
};

constexpr Contestant cContestants[] = {
    {"tessalink", [](const unsigned char* data, std::size_t size,
                     unsigned char* digest) { MD5Hash::GetHash(data, size, digest); }},
#ifdef HAS_OPENSSL
    {"openssl",
     [](const unsigned char* data, std::size_t size, unsigned char* digest) {
         EVP_Digest(data, size, digest, nullptr, EVP_md5(), nullptr);
     }},
    {"openssl prepared",
     [](const unsigned char* data, std::size_t size, unsigned char* digest) {
         // Context and algorithm are found once: the fastest way that the library has.
         static EVP_MD_CTX* const context = EVP_MD_CTX_new();
         static const EVP_MD* const algorithm = EVP_MD_fetch(nullptr, "MD5", nullptr);
         EVP_DigestInit_ex(context, algorithm, nullptr);
         EVP_DigestUpdate(context, data, size);
         EVP_DigestFinal_ex(context, digest, nullptr);
     }},
#endif
#ifdef HAS_NETTLE
    {"nettle",
     [](const unsigned char* data, std::size_t size, unsigned char* digest) {
         md5_ctx context;
         md5_init(&context);
         md5_update(&context, size, data);
         md5_digest(&context, MD5_DIGEST_SIZE, digest);
     }},
#endif
#ifdef HAS_GCRYPT
    {"libgcrypt",
     [](const unsigned char* data, std::size_t size, unsigned char* digest) {
         gcry_md_hash_buffer(GCRY_MD_MD5, digest, data, size);
     }},
#endif
};

std::vector<unsigned char> randomBytes(std::size_t size) {
    std::vector<unsigned char> bytes(size);
    std::uint64_t state = 1;
    for (unsigned char& byte : bytes) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        byte = static_cast<unsigned char>(state >> 56);
    }
    return bytes;
}

int run(std::size_t size, std::size_t texts, int rounds) {
    const std::vector<unsigned char> data = randomBytes(size + texts);
    const auto digestAll = [&](const Contestant& one) {
        Digest digest{};
        // Each text begins a byte further on.
        for (std::size_t i = 0; i < texts; ++i) one.digest(data.data() + i, size, digest.data());
        return digest;
    };
    const Digest expected = digestAll(cContestants[0]);
    for (const Contestant& one : cContestants) {
        if (digestAll(one) != expected) timing::fail(std::string(one.name) + " differs");
    }
    for (int round = 0; round < rounds; ++round) {
        for (const Contestant& one : cContestants) {
            timing::report(one.name,
                           timing::once([&] { digestAll(one); }) / static_cast<double>(texts));
        }
    }
    return 0;
}

int longText(char** arguments) {
    return run(std::strtoull(arguments[0], nullptr, 10), 1, std::atoi(arguments[1]));
}

int shortTexts(char** arguments) {
    return run(std::strtoull(arguments[0], nullptr, 10), 100'000, std::atoi(arguments[1]));
}

constexpr timing::Mode cModes[] = {{"long", 2, longText}, {"short", 2, shortTexts}};

}  // namespace

int main(int argc, char** argv) {
#ifdef HAS_GCRYPT
    gcry_check_version(nullptr);
    gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
#endif
    return timing::runMode(cModes, argc, argv);
}
