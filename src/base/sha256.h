// A digest, as a page names its own script and style by.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// SHA-256 of the bytes, in base 64. Empty when Windows has no such service.
std::string Sha256Base64(std::string_view bytes);

}  // namespace kv
