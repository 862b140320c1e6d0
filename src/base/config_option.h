// Configuration options of the host: reading one, and changing one for a while.
#pragma once

#include <string>

#include <ProToolkit.h>

namespace kv {

// The first value of an option; empty for one that is not set. Errors: those of ProConfigoptArrayGet save
// PRO_TK_E_NOT_FOUND, and of counting the values.
[[nodiscard]] ProError ConfigOptionGet(const wchar_t* option, std::wstring& value);

// PRO_TK_LINE_TOO_LONG for a value that no option can have, else the errors of ProConfigoptSet.
[[nodiscard]] ProError ConfigOptionSet(const wchar_t* option, const std::wstring& value);

// Sets an option and puts it back when it dies.
class ChangedOption {
public:
    // before  the value that it goes back to, as ConfigOptionGet gives it: no call makes an option unset
    // again
    ChangedOption(const wchar_t* option, std::wstring before, const std::wstring& value);
    ChangedOption(const ChangedOption&) = delete;
    ChangedOption& operator=(const ChangedOption&) = delete;
    ~ChangedOption();

    // Of setting it.
    ProError Status() const { return status_; }
    // It stays as it was set.
    void Keep() { isKept_ = true; }

private:
    const wchar_t* option_;
    std::wstring before_;
    ProError status_;
    bool isKept_ = false;
};

}  // namespace kv
