#include <ProSelection.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/cad/pick.h"
#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// A word of the filter and the item types that it lets the user pick, one or two.
struct FilterWord {
    std::string_view word;
    int type;
    int otherType = PRO_TYPE_UNUSED;
};

constexpr std::array kFilterWords = {
    FilterWord{"point", PRO_POINT},       FilterWord{"axis", PRO_AXIS},
    FilterWord{"datum", PRO_DATUM_PLANE}, FilterWord{"csys", PRO_CSYS},
    FilterWord{"feature", PRO_FEATURE},   FilterWord{"membfeat", PRO_FEATURE},
    FilterWord{"component", PRO_FEATURE}, FilterWord{"edge", PRO_EDGE},
    FilterWord{"sldedge", PRO_EDGE},      FilterWord{"qltedge", PRO_EDGE},
    FilterWord{"curve", PRO_CURVE},       FilterWord{"comp_crv", PRO_CURVE},
    FilterWord{"surface", PRO_SURFACE},   FilterWord{"sldface", PRO_SURFACE},
    FilterWord{"qltface", PRO_SURFACE},   FilterWord{"dtmqlt", PRO_QUILT},
    FilterWord{"part", PRO_PART},         FilterWord{"prt_or_asm", PRO_PART, PRO_ASSEMBLY},
    FilterWord{"any_note", PRO_NOTE},     FilterWord{"dimension", PRO_DIMENSION},
    FilterWord{"dwg_view", PRO_VIEW},     FilterWord{"ref_dim", PRO_REF_DIMENSION},
};

// The item types that a comma list of filter words allows; empty, and a violation, for a word that the host
// does not have.
std::vector<int> AllowedTypes(Session& host, std::string_view option) {
    std::vector<int> types;
    while (true) {
        const std::size_t comma = option.find(',');
        const std::string_view word = option.substr(0, comma);
        const auto found = std::ranges::find(kFilterWords, word, &FilterWord::word);
        if (found == kFilterWords.end()) {
            host.report.Violation("is given the unknown filter \"" + std::string(word) + "\"");
            return {};
        }
        types.insert(types.end(), {found->type, found->otherType});
        if (comma == std::string_view::npos) return types;
        option.remove_prefix(comma + 1);
    }
}

// The picks that a person could have made here; the others are problems.
std::vector<Pick> PossiblePicks(Session& host, const std::vector<Pick>& picks, const std::vector<int>& types,
                                int maximum) {
    std::vector<Pick> possible;
    for (const Pick& pick : picks) {
        if (pick.model == nullptr || host.models.FromHandle(pick.model) == nullptr)
            host.user.Problem("picks an item of a model that is not in memory");
        else if (std::ranges::find(types, ItemType(pick)) == types.end())
            host.user.Problem("picks an item of " + Utf8(pick.model->Name()) +
                              " that the filter does not allow");
        else if (maximum >= 0 && possible.size() >= static_cast<std::size_t>(maximum))
            host.user.Problem("picks more than " + std::to_string(maximum) + " items");
        else
            possible.push_back(pick);
    }
    return possible;
}

// A selection of the plug-in's own, which it frees.
ProSelection HandOut(Session& host, const Pick& pick) {
    void* selection = host.desk.NewSelection(pick);
    host.report.Opened(Account::kSelection, selection);
    return static_cast<ProSelection>(selection);
}

// What a selection of an item holds. Nothing, with a violation, where item and path do not fit each other.
std::optional<Pick> PickOf(Session& host, const ProAsmcomppath* path, const ProModelitem* item) {
    SimModel* owner = item == nullptr ? nullptr : FindModel(host, item->owner);
    if (owner == nullptr) return std::nullopt;
    Pick pick = {owner, item->type, item->id, {}, nullptr, path == nullptr};
    if (item->type == static_cast<int>(owner->Kind())) pick.type = pick.id = 0;
    if (path == nullptr) {
        if (owner->Kind() != ModelKind::kAssembly) return pick;
        host.report.Violation("is given an item of the assembly " + Utf8(owner->Name()) + " without a path");
        return std::nullopt;
    }
    const auto end = FindPathEnd(host, path);
    if (!end) return std::nullopt;
    if (end->model != owner) {
        host.report.Violation("is given a path to " + Utf8(end->model->Name()) + " for an item of " +
                              Utf8(owner->Name()));
        return std::nullopt;
    }
    pick.root = host.models.FromHandle(path->owner);
    pick.path.assign(path->comp_id_table, path->comp_id_table + path->table_num);
    return pick;
}

// The result of the last interactive selection is the host's memory: whoever still reads it finds nothing in
// it.
void ForgetLastResult(Desk& desk) {
    for (void*& handle : desk.lastPicked) {
        desk.DropSelection(handle);
        handle = nullptr;
    }
    desk.lastPicked.clear();
}

}  // namespace

ProError ProSelect(char option[], int max_count, ProSelection* p_in_sel, ProSelFunctions* sel_func,
                   ProSelectionEnv sel_env, ProSelAppAction appl_act_data, ProSelection** p_sel_array,
                   int* p_n_sels) {
    static const CallSite kSite("ProSelect",
                                {PRO_TK_BAD_INPUTS, PRO_TK_USER_ABORT, PRO_TK_PICK_ABOVE, PRO_TK_E_DEADLOCK});
    return Traced(
        kSite, {option, max_count, p_in_sel, Out(p_sel_array), Out(p_n_sels)},
        [&](Session& host) -> ProError {
            if (option == nullptr || max_count == 0 || max_count < -1 || p_sel_array == nullptr ||
                p_n_sels == nullptr)
                return PRO_TK_BAD_INPUTS;
            if (sel_env != nullptr &&
                host.memory.Find({BlockKind::kSelectionEnvironment}, sel_env) == nullptr)
                return PRO_TK_BAD_INPUTS;
            if (p_in_sel != nullptr || sel_func != nullptr || appl_act_data != nullptr) {
                host.report.Violation(
                    "is given preselected items or filter functions, which the simulator does not have");
                return PRO_TK_BAD_INPUTS;
            }
            const std::vector<int> types = AllowedTypes(host, option);
            if (types.empty()) return PRO_TK_BAD_INPUTS;
            ForgetLastResult(host.desk);
            *p_sel_array = nullptr;
            *p_n_sels = 0;
            if (host.user.picks.empty()) {
                host.user.Problem(std::string("is asked to pick \"") + option + "\", and nobody said what");
                return PRO_TK_USER_ABORT;
            }
            const PickAnswer answer = std::move(host.user.picks.front());
            host.user.picks.pop_front();
            if (answer.quit) return PRO_TK_USER_ABORT;
            std::vector<void*>& result = host.desk.lastPicked;
            for (const Pick& pick : PossiblePicks(host, answer.picks, types, max_count))
                result.push_back(host.desk.NewSelection(pick));
            if (!result.empty()) *p_sel_array = reinterpret_cast<ProSelection*>(result.data());
            *p_n_sels = static_cast<int>(result.size());
            return PRO_TK_NO_ERROR;
        });
}

ProError ProSelectionEnvAlloc(ProSelectionEnvOption* sel_env_array, int count, ProSelectionEnv* p_sel_env) {
    static const CallSite kSite("ProSelectionEnvAlloc", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {sel_env_array, count, Out(p_sel_env)}, [&](Session& host) -> ProError {
        if (sel_env_array == nullptr || count <= 0 || p_sel_env == nullptr) return PRO_TK_BAD_INPUTS;
        for (int i = 0; i < count; ++i) {
            const int attribute = sel_env_array[i].attribute;
            if (attribute >= PRO_SELECT_DONE_REQUIRED && attribute <= PRO_SELECT_HIDE_SEL_DLG) continue;
            host.report.Violation("is given the unknown option " + std::to_string(attribute));
            return PRO_TK_BAD_INPUTS;
        }
        const HostBlock& block = host.memory.Allocate(
            BlockKind::kSelectionEnvironment, static_cast<std::size_t>(count), sizeof(*sel_env_array));
        std::copy_n(sel_env_array, count, reinterpret_cast<ProSelectionEnvOption*>(block.Data()));
        *p_sel_env = reinterpret_cast<ProSelectionEnv>(block.Data());
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSelectionEnvFree(ProSelectionEnv sel_env) {
    static const CallSite kSite("ProSelectionEnvFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {sel_env}, [&](Session& host) -> ProError {
        return host.memory.Release(BlockKind::kSelectionEnvironment, sel_env) ? PRO_TK_NO_ERROR
                                                                              : PRO_TK_BAD_INPUTS;
    });
}

ProError ProSelectionModelitemGet(ProSelection selection, ProModelitem* p_mdl_item) {
    static const CallSite kSite("ProSelectionModelitemGet", {PRO_TK_BAD_INPUTS, PRO_TK_NOT_EXIST});
    return Traced(kSite, {selection, Out(p_mdl_item)}, [&](Session& host) -> ProError {
        const Pick* pick = FindPick(host, selection);
        if (pick == nullptr || p_mdl_item == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* model = host.models.FromHandle(pick->model);
        if (model == nullptr) return PRO_TK_NOT_EXIST;
        const int id = pick->type == 0 ? PRO_VALUE_UNUSED : pick->id;
        *p_mdl_item = {static_cast<ProType>(ItemType(*pick)), id, model};
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSelectionAsmcomppathGet(ProSelection selection, ProAsmcomppath* p_cmp_path) {
    static const CallSite kSite("ProSelectionAsmcomppathGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {selection, Out(p_cmp_path)}, [&](Session& host) -> ProError {
        const Pick* pick = FindPick(host, selection);
        if (pick == nullptr || p_cmp_path == nullptr || pick->path.size() > PRO_MAX_ASSEM_LEVEL)
            return PRO_TK_BAD_INPUTS;
        // What is selected without a place is at the root of its own.
        SimModel* root = pick->path.empty() ? pick->model : RootOf(host, *pick);
        const int count = static_cast<int>(pick->path.size());
        const auto end = root == nullptr ? std::nullopt : FindPathEnd(*root, pick->path.data(), count);
        if (!end || end->model != pick->model) return PRO_TK_BAD_INPUTS;
        p_cmp_path->owner = reinterpret_cast<ProSolid>(root);
        std::ranges::fill(p_cmp_path->comp_id_table, PRO_VALUE_UNUSED);
        std::ranges::copy(pick->path, p_cmp_path->comp_id_table);
        p_cmp_path->table_num = count;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSelectionCopy(ProSelection from, ProSelection* p_to) {
    static const CallSite kSite("ProSelectionCopy", {PRO_TK_BAD_INPUTS, PRO_TK_OUT_OF_MEMORY});
    return Traced(kSite, {from, Out(p_to)}, [&](Session& host) -> ProError {
        const Pick* pick = FindPick(host, from);
        if (pick == nullptr || p_to == nullptr) return PRO_TK_BAD_INPUTS;
        *p_to = HandOut(host, *pick);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSelectionAlloc(ProAsmcomppath* p_cmp_path, ProModelitem* p_mdl_itm, ProSelection* p_selection) {
    static const CallSite kSite("ProSelectionAlloc", {PRO_TK_BAD_INPUTS, PRO_TK_OUT_OF_MEMORY});
    return Traced(kSite, {p_cmp_path, p_mdl_itm, Out(p_selection)}, [&](Session& host) -> ProError {
        const auto pick = PickOf(host, p_cmp_path, p_mdl_itm);
        if (!pick || p_selection == nullptr) return PRO_TK_BAD_INPUTS;
        *p_selection = HandOut(host, *pick);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSelectionFree(ProSelection* p_selection) {
    static const CallSite kSite("ProSelectionFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {p_selection}, [&](Session& host) -> ProError {
        // Members of arrays, and what the user picked, are not the plug-in's to free.
        if (p_selection == nullptr || !host.report.Closed(Account::kSelection, *p_selection))
            return PRO_TK_BAD_INPUTS;
        host.desk.DropSelection(*p_selection);
        *p_selection = nullptr;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSelectionarrayFree(ProSelection* sel_array) {
    static const CallSite kSite("ProSelectionarrayFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {sel_array}, [&](Session& host) -> ProError {
        const HostBlock* block = host.memory.Find({BlockKind::kSelectionArray}, sel_array);
        if (block == nullptr) return PRO_TK_BAD_INPUTS;
        for (std::size_t i = 0; i < block->count; ++i) host.desk.DropSelection(sel_array[i]);
        host.memory.Release(BlockKind::kSelectionArray, sel_array);
        return PRO_TK_NO_ERROR;
    });
}
