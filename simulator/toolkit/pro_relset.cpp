#include <ProRelSet.h>

#include <string>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// Identifiers by which handles of sets are told from other items, and from each other.
constexpr int kOrdinaryId = 0x5E70001;
constexpr int kPostId = 0x5E70002;

ProRelset Handle(SimModel& model, RelationKind kind) {
    return {static_cast<ProType>(model.Kind()), kind == RelationKind::kOrdinary ? kOrdinaryId : kPostId,
            &model};
}

// A set behind a handle; no model for a handle that no function has filled. One that is all zero is known to
// come from the plug-in: it is refused and no more.
struct FoundSet {
    SimModel* model = nullptr;
    RelationKind kind = RelationKind::kOrdinary;
};

FoundSet FindSet(Session& host, const ProRelset* handle) {
    if (handle == nullptr || (handle->id == 0 && handle->owner == nullptr)) return {};
    if (handle->id != kOrdinaryId && handle->id != kPostId) {
        host.report.Violation("is given a relation set that no host function has filled");
        return {};
    }
    const RelationKind kind = handle->id == kOrdinaryId ? RelationKind::kOrdinary : RelationKind::kPost;
    return {FindModel(host, handle->owner), kind};
}

// The model that an item stands for; null for an item of another type, whose relations the simulator does not
// have.
SimModel* OwnerModel(Session& host, const ProModelitem* item) {
    SimModel* model = item == nullptr ? nullptr : FindModel(host, item->owner);
    const bool isModel = model != nullptr && static_cast<int>(item->type) == static_cast<int>(model->Kind());
    return isModel ? model : nullptr;
}

// The lines of a call; false, with a violation, for a list with a gap.
bool ReadLines(Session& host, ProWstring* list, int count, std::vector<std::wstring>& lines) {
    for (int i = 0; list != nullptr && i < count; ++i) {
        if (list[i] == nullptr) break;
        lines.emplace_back(list[i]);
    }
    if (count >= 0 && lines.size() == static_cast<std::size_t>(count)) return true;
    host.report.Violation("is given fewer lines than it says");
    return false;
}

}  // namespace

ProError ProModelitemToRelset(ProModelitem* p_item, ProRelset* p_relset) {
    static const CallSite kSite("ProModelitemToRelset", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_item, Out(p_relset)}, [&](Session& host) -> ProError {
        SimModel* model = OwnerModel(host, p_item);
        if (model == nullptr || p_relset == nullptr) return PRO_TK_BAD_INPUTS;
        if (!model->Relations().exists) return PRO_TK_E_NOT_FOUND;
        *p_relset = Handle(*model, RelationKind::kOrdinary);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProRelsetPostregenerationInit(ProMdl pro_model, ProRelset* p_relset) {
    static const CallSite kSite("ProRelsetPostregenerationInit", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {pro_model, Out(p_relset)}, [&](Session& host) -> ProError {
        SimModel* model = FindModel(host, pro_model);
        if (model == nullptr || p_relset == nullptr) return PRO_TK_BAD_INPUTS;
        if (!model->Relations(RelationKind::kPost).exists) return PRO_TK_E_NOT_FOUND;
        *p_relset = Handle(*model, RelationKind::kPost);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProRelsetCreate(ProModelitem* p_item, ProRelset* p_relset) {
    static const CallSite kSite(
        "ProRelsetCreate", {PRO_TK_BAD_INPUTS, PRO_TK_E_FOUND, PRO_TK_CANT_MODIFY, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {p_item, Out(p_relset)}, [&](Session& host) -> ProError {
        SimModel* model = OwnerModel(host, p_item);
        if (model == nullptr || p_relset == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (model->Relations().exists) return PRO_TK_E_FOUND;
        model->SetRelations({});
        *p_relset = Handle(*model, RelationKind::kOrdinary);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProRelsetRelationsGet(ProRelset* p_relset, ProWstring** p_line_array) {
    static const CallSite kSite("ProRelsetRelationsGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_relset, p_line_array}, [&](Session& host) -> ProError {
        const FoundSet set = FindSet(host, p_relset);
        if (set.model == nullptr || p_line_array == nullptr) return PRO_TK_BAD_INPUTS;
        HostBlock* block = host.memory.Find({BlockKind::kArray}, *p_line_array);
        if (block == nullptr) return PRO_TK_BAD_INPUTS;
        if (block->elementSize != sizeof(ProWstring) || block->count != 0) {
            host.report.Violation("is given an array that is not of strings, or not empty");
            return PRO_TK_BAD_INPUTS;
        }
        const std::vector<std::wstring>& lines = set.model->Relations(set.kind).lines;
        if (lines.empty()) return PRO_TK_NO_ERROR;
        auto* list = reinterpret_cast<ProWstring*>(host.memory.Resize(*block, lines.size()).Data());
        for (std::size_t i = 0; i < lines.size(); ++i) list[i] = NewHostString(host.memory, lines[i]);
        *p_line_array = list;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProRelsetRelationsSet(ProRelset* p_relset, ProWstring* line_array, int n_lines) {
    static const CallSite kSite("ProRelsetRelationsSet",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {p_relset, line_array, n_lines}, [&](Session& host) -> ProError {
        const FoundSet set = FindSet(host, p_relset);
        std::vector<std::wstring> lines;
        if (set.model == nullptr || !ReadLines(host, line_array, n_lines, lines)) return PRO_TK_BAD_INPUTS;
        if (set.model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (lines.empty() && host.strict.emptyRelationsRefused) return PRO_TK_BAD_INPUTS;
        if (!set.model->RelationFault(lines).empty()) return PRO_TK_GENERAL_ERROR;
        set.model->SetRelations(std::move(lines), set.kind);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProRelsetDelete(ProRelset* p_relset) {
    static const CallSite kSite("ProRelsetDelete", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {p_relset}, [&](Session& host) -> ProError {
        const FoundSet set = FindSet(host, p_relset);
        if (set.model == nullptr) return PRO_TK_BAD_INPUTS;
        if (set.model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        set.model->SetRelations({}, set.kind);
        return PRO_TK_NO_ERROR;
    });
}
