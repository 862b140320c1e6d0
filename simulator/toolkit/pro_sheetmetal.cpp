#include <ProSheetmetal.h>

#include <exception>

#include "simulator/cad/part_file.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/part_files.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// Whether the table can be read from the folder of the option.
bool HasTableFile(const Session& host, std::wstring_view name) {
    const std::filesystem::path file =
        FindPartFile(host, name, {FirstOptionValue(host, L"pro_sheet_met_dir")}, {L".bnd"});
    if (file.empty()) return false;
    try {
        ReadBendTableFile(file);
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

}  // namespace

ProError ProSmtPartBendtableApply(ProPart smt_part, ProName bend_name, ProBoolean from_file) {
    static const CallSite kSite("ProSmtPartBendtableApply", {PRO_TK_BAD_INPUTS, PRO_TK_BAD_CONTEXT,
                                                             PRO_TK_CANT_OPEN, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {smt_part, bend_name, from_file}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, smt_part, ModelKind::kPart);
        const auto name = TextInput(host, bend_name, PRO_NAME_SIZE);
        if (model == nullptr || !name || name->empty()) return PRO_TK_BAD_INPUTS;
        if (model->Subtype() != ModelSubtype::kSheetmetal) return PRO_TK_BAD_CONTEXT;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        const bool isInMemory = UpperName(model->BendTable()) == UpperName(*name);
        if ((from_file == PRO_B_TRUE || !isInMemory) && !HasTableFile(host, *name)) return PRO_TK_CANT_OPEN;
        model->SetBendTable(*name);
        model->CountRegeneration();
        return PRO_TK_NO_ERROR;
    });
}
