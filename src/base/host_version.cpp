// The host's version text: besides the settings files, the one thing that outlives a command.

#include "base/host_version.h"

#include "base/status.h"
#include "base/text.h"

namespace kv {

static std::wstring hostVersion;

void HostVersionKeep(const char* version) {
    if (version == nullptr) return;
    std::wstring text;
    if (!Failed(DecodeText(version, CodePage::ThreadAnsi, text))) hostVersion = text;
}

const std::wstring& HostVersion() {
    return hostVersion;
}

}  // namespace kv
