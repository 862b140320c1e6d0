// SHA-256 on the cryptographic service of Windows.

#include "base/sha256.h"

#include <array>
#include <cstddef>

#include <windows.h>

#include <wincrypt.h>

#include "base/scope_exit.h"

namespace kv {

static constexpr char kBase64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

using Digest = std::array<unsigned char, 32>;

static bool DigestGet(std::string_view bytes, Digest& digest);

std::string Sha256Base64(std::string_view bytes) {
    Digest digest = {};
    if (!DigestGet(bytes, digest)) return {};
    std::string text;
    for (std::size_t i = 0; i < digest.size(); i += 3) {
        unsigned int group = 0;
        for (std::size_t j = i; j < i + 3; ++j) group = group << 8 | (j < digest.size() ? digest[j] : 0U);
        for (int shift = 18; shift >= 0; shift -= 6) text += kBase64[group >> shift & 63U];
    }
    // The last group holds two bytes.
    text.back() = '=';
    return text;
}

static bool DigestGet(std::string_view bytes, Digest& digest) {
    HCRYPTPROV provider = 0;
    if (!CryptAcquireContextW(&provider, nullptr, nullptr, PROV_RSA_AES, CRYPT_VERIFYCONTEXT)) return false;
    const ScopeExit release([provider] { CryptReleaseContext(provider, 0); });
    HCRYPTHASH hash = 0;
    if (!CryptCreateHash(provider, CALG_SHA_256, 0, 0, &hash)) return false;
    const ScopeExit destroy([hash] { CryptDestroyHash(hash); });
    DWORD size = static_cast<DWORD>(digest.size());
    return CryptHashData(hash, reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()),
                         0) &&
           CryptGetHashParam(hash, HP_HASHVAL, digest.data(), &size, 0);
}

}  // namespace kv
