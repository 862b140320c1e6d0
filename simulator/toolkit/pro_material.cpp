#include <ProMaterial.h>

#include <exception>

#include "simulator/cad/part_file.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/part_files.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

bool UpdatesBendTable(const Session& host) {
    return UpperName(FirstOptionValue(host, L"material_update_smt_bend_table")) != L"NEVER_REPLACE";
}

}  // namespace

ProError ProMaterialfileRead(ProSolid part, ProName matl_name) {
    static const CallSite kSite("ProMaterialfileRead",
                                {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE, PRO_TK_E_NOT_FOUND,
                                 PRO_TK_INVALID_FILE, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {part, matl_name}, [&](Session& host) -> ProError {
        SimModel* model = FindSolid(host, part);
        const auto name = TextInput(host, matl_name, PRO_NAME_SIZE);
        if (model == nullptr || !name || name->empty()) return PRO_TK_BAD_INPUTS;
        if (model->Kind() != ModelKind::kPart) return PRO_TK_INVALID_TYPE;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        const std::filesystem::path file =
            FindPartFile(host, *name, {L"", FirstOptionValue(host, L"pro_material_dir")}, {L".mtl", L".mat"});
        if (file.empty()) return PRO_TK_E_NOT_FOUND;
        try {
            model->AddMaterial(ReadMaterialFile(file, *name));
        } catch (const std::exception&) {
            return PRO_TK_INVALID_FILE;
        }
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMaterialCurrentSet(ProMaterial* p_material) {
    static const CallSite kSite("ProMaterialCurrentSet",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {p_material}, [&](Session& host) -> ProError {
        SimModel* model =
            p_material == nullptr ? nullptr : FindModelOf(host, p_material->part, ModelKind::kPart);
        const auto name =
            model == nullptr ? std::nullopt : TextInput(host, p_material->matl_name, PRO_NAME_SIZE);
        if (!name) return PRO_TK_BAD_INPUTS;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        const Material* material = model->FindMaterial(*name);
        if (material == nullptr) return PRO_TK_E_NOT_FOUND;
        model->SetCurrentMaterial(material->name);
        if (model->Subtype() != ModelSubtype::kSheetmetal || !UpdatesBendTable(host)) return PRO_TK_NO_ERROR;
        if (!material->bendTable.empty()) model->SetBendTable(material->bendTable);
        model->CountRegeneration();
        return PRO_TK_NO_ERROR;
    });
}
