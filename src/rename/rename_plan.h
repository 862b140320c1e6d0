// What a rename table asks for, and what may become of it. Plain rules, without a host call.
//
// Names are compared without regard to letter case, always together with the type: "prt", "asm" or "drw".
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kv {

inline constexpr wchar_t kPartType[] = L"prt";
inline constexpr wchar_t kAssemblyType[] = L"asm";
inline constexpr wchar_t kDrawingType[] = L"drw";

// Longer new names are refused without asking the host.
inline constexpr std::size_t kLongestNewName = 32;

struct RenameRow {
    std::wstring oldName;
    std::wstring type;  // whatever is not a part's counts as an assembly
    std::wstring newName;
};

// The type that a row is about.
const wchar_t* TypeOf(const RenameRow& row);

// Names in use.
class NameSet {
public:
    void Add(std::wstring_view name, std::wstring_view type) { keys_.insert(KeyOf(name, type)); }
    bool Has(std::wstring_view name, std::wstring_view type) const {
        return keys_.contains(KeyOf(name, type));
    }
    // The model that a file of this name keeps, "PUMP.ASM" or "pump.asm.3"; other files have no say.
    void AddFile(std::wstring_view fileName);

    // The same for equal names of one type.
    static std::wstring KeyOf(std::wstring_view name, std::wstring_view type);

private:
    std::unordered_set<std::wstring> keys_;
};

// ---- Checking rows without a host

enum class RowFault { None, Empty, TooLong, Characters, Unchanged, Twice, SwapOrChain, Exists };

// What is wrong with each row, the first that fits. Row by row alone a swap looks like a name in use; here it
// is told apart, for the user can get there over a third name.
std::vector<RowFault> RowFaults(std::span<const RenameRow> rows, const NameSet& inUse);

// In words.
const wchar_t* FaultText(RowFault fault);

// ---- Files of tables

// A row of a file as it was written there.
struct LoadedRow {
    std::wstring number;
    RenameRow row;
};

// Titles of the columns, in a table and its files alike; the first four are read back.
inline constexpr std::size_t kReadColumns = 4;
inline constexpr const wchar_t* kColumnTitles[] = {L"序号",   L"原名称", L"类型",
                                                   L"新名称", L"数量",   L"工程图"};

// The rows below the row of titles, or all where there is none; rows without any text are left out.
std::vector<LoadedRow> RowsOfFile(std::span<const std::vector<std::wstring>> cells);

// ---- The tree of an assembly. Model 0 is the top, model n the n-th distinct one below it.

struct TreeEntry {
    int level;          // 1 for a component of the top
    std::size_t model;  // from 1 on
};
// A model and one directly below it.
using TreeTie = std::pair<std::size_t, std::size_t>;

// The ties that entries in depth-first pre-order stand for, each once.
std::vector<TreeTie> TiesOf(std::span<const TreeEntry> entries);

// The models with one of `changed` somewhere below them, each after all that is below it.
std::vector<std::size_t> OwnersOf(std::span<const TreeTie> ties, std::span<const std::size_t> changed);

// ---- The reverse table

struct RenameChange {
    std::wstring from;
    std::wstring type;
    std::wstring to;
};

inline constexpr wchar_t kStateDone[] = L"done";
inline constexpr wchar_t kStateFailed[] = L"failed";
inline constexpr wchar_t kStateRemoved[] = L"removed";
inline constexpr const wchar_t* kReverseTitles[] = {L"新名称", L"类型", L"旧名称", L"状态"};

// What leads back: the renames of a reverse table that were done, or begun when the process ended, the last
// one first.
std::vector<RenameChange> ChangesBack(std::span<const std::vector<std::wstring>> cells);

}  // namespace kv
