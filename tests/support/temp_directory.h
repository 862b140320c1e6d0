// A folder of a test's own, gone when the test ends.

#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include <windows.h>

namespace test {

class TempDirectory {
public:
    TempDirectory() {
        static int counter = 0;
        const std::wstring name =
            L"korvane-test-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++counter);
        path_ = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TempDirectory() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

    std::filesystem::path Write(const std::filesystem::path& name, std::string_view bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

}  // namespace test
