// Configuration options on the host's calls.

#include "base/config_option.h"

#include <utility>

#include <ProUtil.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

ProError ConfigOptionGet(const wchar_t* option, std::wstring& value) {
    value.clear();
    HostArray<ProPath> values;
    ProError status = values.Received(ProConfigoptArrayGet(HostText(option), values.Receive()));
    if (status == PRO_TK_E_NOT_FOUND) return PRO_TK_NO_ERROR;
    // A value that cannot be read must not pass for none: it could not be put back.
    int count = 0;
    if (!Failed(status)) status = ProArraySizeGet(values.Get(), &count);
    if (!Failed(status) && count > 0) value = *values.Get();
    return status;
}

ProError ConfigOptionSet(const wchar_t* option, const std::wstring& value) {
    ProPath path;
    const ProError status = CopyText(value, path);
    return Failed(status) ? status : ProConfigoptSet(HostText(option), path);
}

ChangedOption::ChangedOption(const wchar_t* option, std::wstring before, const std::wstring& value)
    : option_(option), before_(std::move(before)), status_(ConfigOptionSet(option, value)) {}

ChangedOption::~ChangedOption() {
    if (Failed(status_) || isKept_) return;
    // One refusal is not taken for an answer: the option is the user's.
    if (Failed(ConfigOptionSet(option_, before_))) (void)ConfigOptionSet(option_, before_);
}

}  // namespace kv
