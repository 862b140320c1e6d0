// One argument of a traced call: kept as it came, made readable only when somebody looks.

#pragma once

#include <string>
#include <type_traits>

namespace sim {

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
};

}  // namespace sim
