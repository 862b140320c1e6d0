// What a folder of model files is worth to somebody who opens it afresh.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace test {

// "PUMP.asm needs BOLT.prt" for every file of the newest versions that does not find what it names, when all
// is loaded from disk.
std::set<std::wstring> MissingIn(const std::filesystem::path& folder);

// Whether the folder has a file of the model, "bolt2.prt", in some version.
bool HasModelFile(const std::filesystem::path& folder, const std::wstring& model);

}  // namespace test
