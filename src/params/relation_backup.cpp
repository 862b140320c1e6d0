// Backups of relations.

#include "params/relation_backup.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

#include "base/csv.h"
#include "base/file.h"
#include "base/number.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr std::size_t kLargestFile = std::size_t{256} << 20;
static constexpr std::string_view kMark = "\xEF\xBB\xBF";

template <typename Value>
struct Word {
    const wchar_t* text;
    Value value;
};
static constexpr Word<ProMdlType> kTypes[] = {
    {L"零件", PRO_MDL_PART}, {L"组件", PRO_MDL_ASSEMBLY}, {L"制造", PRO_MDL_MFG}};
static constexpr Word<RelationKind> kKinds[] = {{L"初始", RelationKind::Initial},
                                                {L"再生后", RelationKind::AfterRegeneration}};

using Cells = std::vector<std::wstring>;

template <typename Value, std::size_t Size>
static const wchar_t* WordOf(const Word<Value> (&words)[Size], Value value);
template <typename Value, std::size_t Size>
static bool ValueOf(const Word<Value> (&words)[Size], const std::wstring& text, Value& value);
static bool HeadFromCells(const Cells& cells, RelationBlock& block, std::size_t& lineCount);
static bool LinesFromRows(std::span<const Cells> rows, RelationLines& lines);

std::vector<RelationBlock> RelationBlocksFromText(std::wstring_view text) {
    const std::vector<Cells> rows = CsvRows(WholeRows(text));
    std::vector<RelationBlock> blocks;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        RelationBlock block;
        std::size_t count = 0;
        if (!HeadFromCells(rows[i], block, count) || count > rows.size() - i - 1) continue;
        if (LinesFromRows(std::span(rows).subspan(i + 1, count), block.lines))
            blocks.push_back(std::move(block));
    }
    return blocks;
}

ProError RelationBackupRead(const std::wstring& path, std::vector<RelationBlock>& blocks) {
    std::string bytes;
    std::wstring text;
    ProError status = FileRead(path, kLargestFile, bytes);
    if (!Failed(status))
        status =
            DecodeText(bytes.starts_with(kMark) ? bytes.substr(kMark.size()) : bytes, CodePage::Utf8, text);
    if (!Failed(status)) blocks = RelationBlocksFromText(text);
    return status;
}

void RelationBackup::Add(const RelationBlock& block) {
    const ProError status = BlockWrite(block);
    if (Failed(status)) status_ = status;
}

ProError RelationBackup::BlockWrite(const RelationBlock& block) {
    ProError status = PRO_TK_NO_ERROR;
    if (!isBegun_) {
        isBegun_ = true;
        status = file_.Create(kRelationFolder, command_);
        if (!Failed(status)) status = file_.RowWrite(Cells{L"模型", L"类型", L"关系集", L"行数"});
    }
    if (!Failed(status))
        status = file_.RowWrite(Cells{L"'" + block.model, WordOf(kTypes, block.type),
                                      WordOf(kKinds, block.kind), std::to_wstring(block.lines.size())});
    for (const std::wstring& line : block.lines)
        if (!Failed(status)) status = file_.RowWrite(Cells{L"", L"'" + line});
    return status;
}

template <typename Value, std::size_t Size>
static const wchar_t* WordOf(const Word<Value> (&words)[Size], Value value) {
    const Word<Value>* found = std::ranges::find(words, value, &Word<Value>::value);
    return found == std::end(words) ? L"" : found->text;
}

template <typename Value, std::size_t Size>
static bool ValueOf(const Word<Value> (&words)[Size], const std::wstring& text, Value& value) {
    const auto isText = [&text](const Word<Value>& word) { return text == word.text; };
    const Word<Value>* found = std::ranges::find_if(words, isText);
    if (found != std::end(words)) value = found->value;
    return found != std::end(words);
}

// False for a row that heads no block.
static bool HeadFromCells(const Cells& cells, RelationBlock& block, std::size_t& lineCount) {
    if (cells.size() != 4 || !cells[0].starts_with(L'\'')) return false;
    int count = 0;
    const bool isHead = ValueOf(kTypes, cells[1], block.type) && ValueOf(kKinds, cells[2], block.kind) &&
                        !Failed(IntegerFromText(cells[3], count)) && count >= 0;
    block.model = cells[0].substr(1);
    lineCount = static_cast<std::size_t>(count);
    return isHead;
}

// False when one of the rows is no line of relations.
static bool LinesFromRows(std::span<const Cells> rows, RelationLines& lines) {
    for (const Cells& cells : rows) {
        if (cells.size() != 2 || !cells[0].empty() || !cells[1].starts_with(L'\'')) return false;
        lines.push_back(cells[1].substr(1));
    }
    return true;
}

}  // namespace kv
