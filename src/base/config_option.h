// An option of the host, changed for a while.
#pragma once

#include <string>

#include <ProUtil.h>

#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

// Sets an option of one value until the guard dies.
//
// unset   what it goes back to when it had no value: the host cannot take a value away
// status  the errors of ProConfigoptSet, also those of reading but PRO_TK_E_NOT_FOUND; the option is then the
//         same as before
[[nodiscard]] inline auto UseConfigOption(const wchar_t* option, const wchar_t* value, const wchar_t* unset,
                                          ProError& status) {
    struct Previous {
        const wchar_t* option;
        ProPath value = {};
        bool changed = false;
    } previous = {option};
    ProPath wanted;
    status = ProConfigoptionGet(HostText(option), previous.value);
    if (status == PRO_TK_E_NOT_FOUND) status = CopyText(unset, previous.value);
    if (!Failed(status)) status = CopyText(value, wanted);
    if (!Failed(status)) status = ProConfigoptSet(HostText(option), wanted);
    previous.changed = !Failed(status);
    return ScopeExit([previous]() mutable {
        if (!previous.changed) return;
        // One refusal is not taken for an answer: the option is the user's.
        if (Failed(ProConfigoptSet(HostText(previous.option), previous.value)))
            (void)ProConfigoptSet(HostText(previous.option), previous.value);
    });
}

}  // namespace kv
