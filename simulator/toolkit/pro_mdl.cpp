#include <ProAssembly.h>
#include <ProMdl.h>

#include <algorithm>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/looks.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The longest name that the name functions take and give, although their buffers are longer.
constexpr std::size_t kLongestName = 80;

ProMdlsubtype SubtypeOf(const SimModel& model) {
    switch (model.Subtype()) {
        case ModelSubtype::kSheetmetal:
            return PROMDLSTYPE_PART_SHEETMETAL;
        // Being a skeleton is no subtype.
        case ModelSubtype::kSkeleton:
        case ModelSubtype::kSolidPart:
            return PROMDLSTYPE_PART_SOLID;
        case ModelSubtype::kDesignAssembly:
            return PROMDLSTYPE_ASM_DESIGN;
        case ModelSubtype::kMould:
        case ModelSubtype::kNone:
            break;
    }
    return PROMDLSTYPE_NONE;
}

bool IsOptionOn(const Session& host, const wchar_t* option) {
    const auto values = host.configOptions.find(option);
    return values != host.configOptions.end() && !values->second.empty() &&
           UpperName(values->second.front()) == L"YES";
}

}  // namespace

ProError ProMdlCurrentGet(ProMdl* p_handle) {
    static const CallSite kSite("ProMdlCurrentGet", {PRO_TK_BAD_CONTEXT});
    return Traced(kSite, {Out(p_handle)}, [&](Session& host) -> ProError {
        if (p_handle == nullptr) return PRO_TK_BAD_INPUTS;
        if (host.models.current == nullptr) return PRO_TK_BAD_CONTEXT;
        *p_handle = host.models.current;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlActiveGet(ProMdl* p_handle) {
    static const CallSite kSite("ProMdlActiveGet", {PRO_TK_BAD_CONTEXT});
    return Traced(kSite, {Out(p_handle)}, [&](Session& host) -> ProError {
        if (p_handle == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* active = host.desk.Active();
        if (active == nullptr) return PRO_TK_BAD_CONTEXT;
        *p_handle = active;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlTypeGet(ProMdl model, ProMdlType* p_type) {
    static const CallSite kSite("ProMdlTypeGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {model, p_type}, [&](Session& host) -> ProError {
        if (p_type == nullptr) return PRO_TK_BAD_INPUTS;
        const SimModel* found = FindModel(host, model);
        *p_type = found == nullptr ? PRO_MDL_UNUSED : static_cast<ProMdlType>(found->Kind());
        return found == nullptr ? PRO_TK_BAD_INPUTS : PRO_TK_NO_ERROR;
    });
}

ProError ProMdlSubtypeGet(ProMdl model, ProMdlsubtype* subtype) {
    static const CallSite kSite("ProMdlSubtypeGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {model, subtype}, [&](Session& host) -> ProError {
        if (subtype == nullptr) return PRO_TK_BAD_INPUTS;
        *subtype = PROMDLSTYPE_NONE;
        const SimModel* found = FindModel(host, model);
        if (found == nullptr) return PRO_TK_BAD_INPUTS;
        *subtype = SubtypeOf(*found);
        return *subtype == PROMDLSTYPE_NONE ? PRO_TK_E_NOT_FOUND : PRO_TK_NO_ERROR;
    });
}

ProError ProMdlNameGet(ProMdl handle, ProName name) {
    static const CallSite kSite("ProMdlNameGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {handle, Out(name, PRO_NAME_SIZE)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModel(host, handle);
        if (model == nullptr) return PRO_TK_BAD_INPUTS;
        return FillBuffer<wchar_t>(model->Name(), name, PRO_NAME_SIZE) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
    });
}

ProError ProMdlMdlnameGet(ProMdl handle, ProMdlName name) {
    static const CallSite kSite("ProMdlMdlnameGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {handle, Out(name, PRO_MDLNAME_SIZE)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModel(host, handle);
        if (model == nullptr || model->Name().size() > kLongestName) return PRO_TK_BAD_INPUTS;
        return FillBuffer<wchar_t>(model->Name(), name, PRO_MDLNAME_SIZE) ? PRO_TK_NO_ERROR
                                                                          : PRO_TK_BAD_INPUTS;
    });
}

ProError ProMdlExtensionGet(ProMdl handle, ProMdlExtension ext) {
    static const CallSite kSite("ProMdlExtensionGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {handle, Out(ext, PRO_MDLEXTENSION_SIZE)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModel(host, handle);
        if (model == nullptr || ext == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->origin.empty() && !host.strict.newModelHasExtension) return PRO_TK_E_NOT_FOUND;
        const bool isFilled = FillBuffer<wchar_t>(ExtensionOf(model->Kind()), ext, PRO_MDLEXTENSION_SIZE);
        return isFilled ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProMdlDirectoryPathGet(ProMdl handle, ProPath dir_path) {
    static const CallSite kSite("ProMdlDirectoryPathGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {handle, Out(dir_path, PRO_PATH_SIZE)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModel(host, handle);
        if (model == nullptr || dir_path == nullptr) return PRO_TK_BAD_INPUTS;
        return FillPath(model->directory, true, dir_path) ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
    });
}

ProError ProMdlToModelitem(ProMdl mdl, ProModelitem* p_model_item) {
    static const CallSite kSite("ProMdlToModelitem", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_PTR});
    return Traced(kSite, {mdl, Out(p_model_item)}, [&](Session& host) -> ProError {
        if (mdl == nullptr || p_model_item == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* model = FindModel(host, mdl);
        if (model == nullptr) return PRO_TK_INVALID_PTR;
        *p_model_item = {static_cast<ProType>(model->Kind()), PRO_VALUE_UNUSED, model};
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlnameInit(ProMdlName name, ProMdlfileType type, ProMdl* p_mdl_handle) {
    static const CallSite kSite("ProMdlnameInit", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {name, type, Out(p_mdl_handle)}, [&](Session& host) -> ProError {
        const auto text = TextInput(host, name, PRO_MDLNAME_SIZE);
        const auto kind = KindFromType(type);
        if (!text || text->empty() || !kind || p_mdl_handle == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* model = host.models.Find(*text, *kind);
        if (model == nullptr) return PRO_TK_E_NOT_FOUND;
        *p_mdl_handle = model;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlnameRetrieve(ProFamilyMdlName name, ProMdlfileType type, ProMdl* p_handle) {
    static const CallSite kSite("ProMdlnameRetrieve",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND, PRO_TK_NO_PERMISSION});
    return Traced(kSite, {name, type, Out(p_handle)}, [&](Session& host) -> ProError {
        const auto text = TextInput(host, name, PRO_FAMILY_MDLNAME_SIZE);
        const auto kind = KindFromType(type);
        if (!text || text->empty() || !kind || p_handle == nullptr) return PRO_TK_BAD_INPUTS;
        const bool isPath = text->find_first_of(L"\\/") != std::wstring_view::npos;
        const bool goesByPath = isPath && !host.strict.pathAsNameRefused;
        if (!goesByPath && text->size() > kLongestName) return PRO_TK_BAD_INPUTS;
        SimModel* model = nullptr;
        const ProError status =
            goesByPath ? host.models.Load(*text, *kind, model) : host.models.Retrieve(*text, *kind, model);
        if (status == PRO_TK_NO_ERROR) *p_handle = model;
        return status;
    });
}

ProError ProMdlFiletypeLoad(ProPath full_path, ProMdlfileType type, ProBoolean ask_user_about_reps,
                            ProMdl* p_handle) {
    static const CallSite kSite(
        "ProMdlFiletypeLoad",
        {PRO_TK_BAD_INPUTS, PRO_TK_CANT_OPEN, PRO_TK_E_NOT_FOUND, PRO_TK_INVALID_FILE, PRO_TK_NO_PERMISSION});
    return Traced(
        kSite, {full_path, type, ask_user_about_reps, Out(p_handle)}, [&](Session& host) -> ProError {
            const auto text = TextInput(host, full_path, PRO_PATH_SIZE);
            if (!text || text->empty() || p_handle == nullptr) return PRO_TK_BAD_INPUTS;
            auto kind = KindFromType(type);
            if (type == PRO_MDLFILE_UNUSED) {
                const auto parts = ParseModelFileName(std::filesystem::path(*text).filename().wstring());
                if (parts) kind = parts->kind;
            }
            if (!kind) return PRO_TK_BAD_INPUTS;
            SimModel* model = nullptr;
            const ProError status = host.models.Load(*text, *kind, model);
            if (status == PRO_TK_NO_ERROR) *p_handle = model;
            return status;
        });
}

ProError ProMdlnameCopy(ProMdl handle, ProMdlName new_name, ProMdl* p_new_handle) {
    static const CallSite kSite("ProMdlnameCopy",
                                {PRO_TK_BAD_INPUTS, PRO_TK_NO_PERMISSION, PRO_TK_UNSUPPORTED});
    return Traced(kSite, {handle, new_name, Out(p_new_handle)}, [&](Session& host) -> ProError {
        SimModel* model = FindModel(host, handle);
        const auto name = TextInput(host, new_name, PRO_MDLNAME_SIZE);
        if (model == nullptr || !name) return PRO_TK_BAD_INPUTS;
        SimModel* copy = nullptr;
        const ProError status = host.models.Copy(*model, *name, copy);
        if (status == PRO_TK_INVALID_NAME) return PRO_TK_BAD_INPUTS;
        if (status != PRO_TK_NO_ERROR) return PRO_TK_GENERAL_ERROR;
        if (p_new_handle != nullptr)
            *p_new_handle = copy;
        else
            host.models.Erase(*copy);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlnameBackup(ProMdl handle, ProPath backup_dir) {
    static const CallSite kSite("ProMdlnameBackup",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CANT_WRITE, PRO_TK_INVALID_DIR});
    return Traced(kSite, {handle, backup_dir}, [&](Session& host) -> ProError {
        SimModel* model = FindModel(host, handle);
        const auto folder = TextInput(host, backup_dir, PRO_PATH_SIZE);
        if (model == nullptr || !folder) return PRO_TK_BAD_INPUTS;
        return host.models.Backup(*model, folder->empty() ? host.models.WorkingDirectory() : *folder);
    });
}

ProError ProMdlDisplay(ProMdl model) {
    static const CallSite kSite("ProMdlDisplay",
                                {PRO_TK_BAD_CONTEXT, PRO_TK_E_NOT_FOUND, PRO_TK_INVALID_TYPE});
    return Traced(kSite, {model}, [&](Session& host) -> ProError {
        if (model == nullptr && host.models.current == nullptr) return PRO_TK_BAD_CONTEXT;
        SimModel* shown = model == nullptr ? host.models.current : FindModel(host, model);
        if (shown == nullptr) return PRO_TK_E_NOT_FOUND;
        host.desk.Display(*shown);
        return PRO_TK_NO_ERROR;
    });
}

namespace {

// The assembly and the way in it that an occurrence's item names; null, and a violation, when it names none.
SimModel* FindOccurrence(Session& host, const ProAsmitem& item, std::vector<int>& ids) {
    if (!FindPathEnd(host, &item.path)) return nullptr;
    ids.assign(item.path.comp_id_table, item.path.comp_id_table + item.path.table_num);
    SimModel* top = host.models.FromHandle(item.path.owner);
    if (!ids.empty() && item.item.owner == top) return top;
    host.report.Violation("is given an occurrence whose owner is not the top assembly");
    return nullptr;
}

}  // namespace

ProError ProMdlVisibleSideAppearancepropsGet(ProAsmitem* item, int surf_side,
                                             ProSurfaceAppearanceProps* props) {
    static const CallSite kSite("ProMdlVisibleSideAppearancepropsGet", {PRO_TK_BAD_INPUTS, PRO_TK_NOT_EXIST});
    return Traced(kSite, {item, surf_side, Out(props)}, [&](Session& host) -> ProError {
        if (item == nullptr || props == nullptr || surf_side != 0) return PRO_TK_BAD_INPUTS;
        std::vector<int> ids;
        const SimModel* top = FindOccurrence(host, *item, ids);
        if (top == nullptr || host.strict.occurrenceLooksRefused) return PRO_TK_BAD_INPUTS;
        const auto found = top->occurrenceLooks.find(ids);
        if (found == top->occurrenceLooks.end()) return PRO_TK_NOT_EXIST;
        FillAppearance(found->second, *props);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlVisibleSideAppearancepropsSet(ProAsmitem* item, int surf_side,
                                             ProSurfaceAppearanceProps* props) {
    static const CallSite kSite("ProMdlVisibleSideAppearancepropsSet",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {item, surf_side, props}, [&](Session& host) -> ProError {
        if (item == nullptr || surf_side != 0) return PRO_TK_BAD_INPUTS;
        std::vector<int> ids;
        SimModel* top = FindOccurrence(host, *item, ids);
        if (top == nullptr || host.strict.occurrenceLooksRefused) return PRO_TK_BAD_INPUTS;
        std::optional<Look> look;
        const ProError status = SetLook(host, *top, look, props);
        if (status != PRO_TK_NO_ERROR) return status;
        if (look)
            top->occurrenceLooks[ids] = *look;
        else
            top->occurrenceLooks.erase(ids);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProTreetoolRefresh(ProMdl mdl) {
    static const CallSite kSite("ProTreetoolRefresh", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {mdl}, [&](Session& host) -> ProError {
        SimModel* model = FindModel(host, mdl);
        if (model == nullptr) return PRO_TK_BAD_INPUTS;
        if (!host.desk.IsShown(*model)) return PRO_TK_E_NOT_FOUND;
        model->CountTreeRefresh();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlSave(ProMdl handle) {
    static const CallSite kSite("ProMdlSave",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CHECKOUT_CONFLICT, PRO_TK_NO_PERMISSION});
    return Traced(kSite, {handle}, [&](Session& host) -> ProError {
        SimModel* model = FindModel(host, handle);
        if (model == nullptr) return PRO_TK_BAD_INPUTS;
        host.models.savesInWorkingDirectory = IsOptionOn(host, L"OVERRIDE_STORE_BACK");
        return host.models.Save(*model);
    });
}

ProError ProMdlnameRename(ProMdl handle, ProMdlName new_name) {
    static const CallSite kSite("ProMdlnameRename",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY, PRO_TK_NO_PERMISSION});
    return Traced(kSite, {handle, new_name}, [&](Session& host) -> ProError {
        SimModel* model = FindModel(host, handle);
        const auto name = TextInput(host, new_name, PRO_MDLNAME_SIZE);
        if (model == nullptr || !name) return PRO_TK_BAD_INPUTS;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        return host.models.Rename(*model, *name) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
    });
}

ProError ProMdlIsModifiable(ProMdl p_model, ProBoolean show_ui, ProBoolean* can_modify) {
    static const CallSite kSite("ProMdlIsModifiable", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_model, show_ui, Out(can_modify)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModel(host, p_model);
        if (model == nullptr || can_modify == nullptr) return PRO_TK_BAD_INPUTS;
        *can_modify = model->IsReadOnly() ? PRO_B_FALSE : PRO_B_TRUE;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlModificationVerify(ProMdl handle, ProBoolean* p_modified) {
    static const CallSite kSite("ProMdlModificationVerify", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {handle, Out(p_modified)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModel(host, handle);
        if (model == nullptr || p_modified == nullptr) return PRO_TK_BAD_INPUTS;
        *p_modified = model->IsModified() ? PRO_B_TRUE : PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlErase(ProMdl handle) {
    static const CallSite kSite("ProMdlErase", {PRO_TK_BAD_INPUTS, PRO_TK_E_DEADLOCK});
    return Traced(kSite, {handle}, [&](Session& host) -> ProError {
        SimModel* model = FindModel(host, handle);
        if (model == nullptr) return PRO_TK_BAD_INPUTS;
        const bool goesNow = !host.strict.eraseWaits && !host.desk.IsShown(*model);
        if (!goesNow || !host.models.Erase(*model)) host.desk.EraseLater(*model);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlEraseNotDisplayed() {
    static const CallSite kSite("ProMdlEraseNotDisplayed", {PRO_TK_E_DEADLOCK});
    return Traced(kSite, {}, [](Session& host) -> ProError {
        host.desk.EraseNotShown();
        return PRO_TK_NO_ERROR;
    });
}
