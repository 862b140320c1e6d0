// The way back from a rename, on disk before anything is renamed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/run_file.h"
#include "rename/rename_plan.h"

namespace kv {

// Shown when the table cannot be written.
inline constexpr wchar_t kNoReverseTable[] = L"\t无法写入撤销记录，未做任何改动！\t";

// A table in the user's application data with a row for each rename: new name, type, old name and what became
// of it. A row without that was begun when the process ended. A row without an old name is a model that was
// made to try a name, and whose file is to be deleted.
class ReverseTable {
public:
    // Errors: those of RunFile.
    [[nodiscard]] ProError Begin();

    // Writes a row and sees to it that it outlives the process. PRO_TK_CANT_WRITE.
    [[nodiscard]] ProError Add(const std::wstring& newName, std::wstring_view type,
                               const std::wstring& oldName);
    // Says what became of the last row.
    void Mark(const wchar_t* state);

private:
    RunFile file_;
};

// What leads back from the last run that renamed anything; empty for none.
std::vector<RenameChange> LastChangesBack();

}  // namespace kv
