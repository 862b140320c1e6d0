// Reverse tables, among the files of runs.

#include "rename/reverse_table.h"

#include <array>

#include "base/csv.h"
#include "base/file.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kFolder[] = L"rename";
static constexpr char kCommand[] = "KvRename";
static constexpr std::size_t kStateWidth = 8;
static constexpr std::size_t kLargestFile = std::size_t{16} << 20;

ProError ReverseTable::Begin() {
    const ProError status = file_.Create(kFolder, kCommand);
    const std::vector<std::wstring> titles(std::begin(kReverseTitles), std::end(kReverseTitles));
    return Failed(status) ? status : file_.RowWrite(titles);
}

ProError ReverseTable::Add(const std::wstring& newName, std::wstring_view type, const std::wstring& oldName) {
    const std::array<std::wstring, 3> cells = {HarmlessCell(newName), std::wstring(type),
                                               HarmlessCell(oldName)};
    const ProError status = file_.RowReserve(cells, kStateWidth);
    return Failed(status) ? status : file_.Flush();
}

void ReverseTable::Mark(const wchar_t* state) {
    // The row stays as begun, which leads back as well.
    (void)file_.ReservedWrite(state);
}

std::vector<RenameChange> LastChangesBack() {
    for (const std::wstring& path : RunFilesNewestFirst(kFolder, kCommand)) {
        std::string bytes;
        std::wstring text;
        if (Failed(FileRead(path, kLargestFile, bytes)) || Failed(DecodeFile(bytes, text))) continue;
        std::vector<RenameChange> changes = ChangesBack(CsvRows(text));
        if (!changes.empty()) return changes;
    }
    return {};
}

}  // namespace kv
