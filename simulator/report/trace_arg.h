// One argument of a traced call: kept as it came, made readable only when somebody looks. Outputs are known
// as such, so that a failing call can spoil them.

#pragma once

#include <cstddef>
#include <string>
#include <type_traits>

namespace sim {

// What outputs hold that mean nothing: those of a failed call, and the rest of a buffer behind its text.
inline constexpr unsigned char kSpoiledByte = 0xCD;

class TraceArg {
public:
    TraceArg(const char* text) : kind_(Kind::kNarrow), narrow_(text) {}
    TraceArg(const wchar_t* text) : kind_(Kind::kWide), wide_(text) {}
    TraceArg(char* text) : TraceArg(static_cast<const char*>(text)) {}
    TraceArg(wchar_t* text) : TraceArg(static_cast<const wchar_t*>(text)) {}
    TraceArg(double number) : kind_(Kind::kReal), real_(number) {}
    TraceArg(std::nullptr_t) : kind_(Kind::kPointer), pointer_(nullptr) {}

    template <typename T>
    requires(std::is_integral_v<T> || std::is_enum_v<T>) TraceArg(T number)
        : kind_(Kind::kInteger), integer_(static_cast<long long>(number)) {}

    template <typename T>
    TraceArg(T* pointer) : kind_(Kind::kPointer) {
        if constexpr (std::is_function_v<T>)
            pointer_ = reinterpret_cast<const void*>(pointer);
        else
            pointer_ = pointer;
    }

    // What the call gives: `bytes` at this place, null for an output that the caller does not want. `isText`:
    // wide characters.
    static TraceArg Output(void* place, std::size_t bytes, bool isText = false) {
        TraceArg argument(static_cast<const void*>(place));
        argument.outputBytes_ = bytes;
        argument.isTextOutput_ = isText;
        return argument;
    }
    // Fills an output with a pattern that is nobody's value: no handle, no number of anything, and as a text
    // nothing but itself. Other arguments stay.
    void Spoil() const;

    // UTF-8: texts in quotes, numbers in decimal, other pointers as "null" or "0x...".
    // A text pointer is read here, so the call's strings must still live.
    std::string Text() const;

private:
    enum class Kind { kNarrow, kWide, kInteger, kReal, kPointer };
    Kind kind_;
    union {
        const char* narrow_;
        const wchar_t* wide_;
        long long integer_;
        double real_;
        const void* pointer_;
    };
    std::size_t outputBytes_ = 0;  // 0: an input
    bool isTextOutput_ = false;
};

}  // namespace sim
