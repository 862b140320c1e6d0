// Relations as they were before a run changed them, in a file that a later run can read.
//
//     模型,类型,关系集,行数
//     'BOLT,零件,初始,2
//     ,'d1 = 10
//     ,'d2 = d1 / 2
//
// Each model has a block. The apostrophe keeps spreadsheets from taking a line for a formula. A block that
// does not have as many lines as it says was not written to its end, and counts for nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <ProMdl.h>

#include "base/run_file.h"
#include "params/relation_set.h"

namespace kv {

struct RelationBlock {
    std::wstring model;
    ProMdlType type = PRO_MDL_UNUSED;
    RelationKind kind = RelationKind::Initial;
    RelationLines lines;
};

// The whole blocks of a file's text. No host call.
std::vector<RelationBlock> RelationBlocksFromText(std::wstring_view text);

// The blocks of the file at this path. PRO_TK_CANT_OPEN, PRO_TK_NOT_VALID for a file that holds no text.
[[nodiscard]] ProError RelationBackupRead(const std::wstring& path, std::vector<RelationBlock>& blocks);

// Writes such a file; it is made with its first block.
class RelationBackup {
public:
    explicit RelationBackup(const char* command) : command_(command) {}

    // A block that cannot be written stops nothing: IsWhole tells.
    void Add(const RelationBlock& block);

    // Whether every block that was added is in the file.
    bool IsWhole() const { return status_ == PRO_TK_NO_ERROR; }
    // Empty before the first block, and when no file could be made.
    const std::wstring& Path() const { return file_.Path(); }

private:
    [[nodiscard]] ProError BlockWrite(const RelationBlock& block);

    const char* command_;
    bool isBegun_ = false;
    ProError status_ = PRO_TK_NO_ERROR;
    RunFile file_;
};

}  // namespace kv
