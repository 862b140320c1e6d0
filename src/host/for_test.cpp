// ForTest: a developer's probe.

#include "host/for_test.h"

#include <ProMdl.h>
#include <ProSelection.h>

#include "base/status.h"
#include "base/text.h"

namespace kv {

ProError ForTest() {
    ProMdl model = nullptr;
    ProError status = ProMdlCurrentGet(&model);
    if (Failed(status)) return status;
    // The picked selections belong to the host.
    ProSelection* selections = nullptr;
    int count = 0;
    status = ProSelect(HostName("feature"), 1, nullptr, nullptr, nullptr, nullptr, &selections, &count);
    if (Failed(status) || count != 1 || selections == nullptr) return status;
    ProModelitem item = {};
    return ProSelectionModelitemGet(selections[0], &item);
}

}  // namespace kv
