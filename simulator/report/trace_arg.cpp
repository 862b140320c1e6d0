#include "simulator/report/trace_arg.h"

#include <cstdio>
#include <cstring>

#include "simulator/report/utf8.h"

namespace sim {

std::string TraceArg::Text() const {
    char number[40];
    switch (kind_) {
        case Kind::kNarrow:
            return narrow_ == nullptr ? "null" : "\"" + std::string(narrow_) + "\"";
        case Kind::kWide:
            return wide_ == nullptr ? "null" : "\"" + Utf8(wide_) + "\"";
        case Kind::kInteger:
            return std::to_string(integer_);
        case Kind::kReal:
            std::snprintf(number, sizeof number, "%g", real_);
            return number;
        case Kind::kPointer:
            break;
    }
    if (pointer_ == nullptr) return "null";
    std::snprintf(number, sizeof number, "%p", pointer_);
    return number;
}

void TraceArg::Spoil() const {
    if (outputBytes_ == 0 || pointer_ == nullptr) return;
    auto* place = static_cast<unsigned char*>(const_cast<void*>(pointer_));
    std::memset(place, kSpoiledByte, outputBytes_);
    // So that whoever shows the text shows the pattern, and no more than the buffer.
    if (isTextOutput_) std::memset(place + outputBytes_ - sizeof(wchar_t), 0, sizeof(wchar_t));
}

}  // namespace sim
