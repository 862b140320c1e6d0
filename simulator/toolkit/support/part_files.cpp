#include "simulator/toolkit/support/part_files.h"

#include <string>
#include <system_error>

#include "simulator/report/utf8.h"

namespace sim {

namespace fs = std::filesystem;

std::wstring FirstOptionValue(const Session& host, std::wstring_view option) {
    const auto values = host.configOptions.find(UpperName(option));
    return values == host.configOptions.end() || values->second.empty() ? std::wstring()
                                                                        : values->second.front();
}

fs::path FindPartFile(const Session& host, std::wstring_view name,
                      std::initializer_list<std::wstring> folders,
                      std::initializer_list<std::wstring_view> extensions) {
    for (const std::wstring& folder : folders) {
        for (const std::wstring_view extension : extensions) {
            fs::path file = host.models.WorkingDirectory() / folder / name;
            file += extension;
            std::error_code error;
            if (fs::is_regular_file(file, error)) return file;
        }
    }
    return {};
}

}  // namespace sim
