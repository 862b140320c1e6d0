// SetUnit: one system of units for a model and all below it.
//
// The system is looked up by name in each model; the one called "mmgs" is made first where a model does not
// have it. The host regenerates a model by itself when its units change.

#include "params/set_unit.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <ProMdl.h>
#include <ProMdlUnits.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_batch.h"
#include "model/model_walk.h"
#include "ui/dialog.h"
#include "ui/message_box.h"

namespace kv {

static constexpr char kUnitDialog[] = "SetUnit";
static constexpr char kUnitChoice[] = "UnitRadio";
static constexpr char kConversion[] = "OptionRadio";
static constexpr char kCurrentSystem[] = "CurrentUnit";
static constexpr char kSameDimensions[] = "SAME_DIMS";
static constexpr char kSameSize[] = "SAME_SIZE";

static constexpr wchar_t kStepCollect[] = L"读取单位制";
static constexpr wchar_t kUnitsSet[] = L"模型批量单位设置完成";
static constexpr wchar_t kNothingChosen[] = L"\t请选择单位制和转换方式！\t";

// A choice and the name of its system, as the host spells it up to letter case.
struct UnitRow {
    std::string_view choice;
    const wchar_t* system;
};

// The system that the command makes itself, and what it is made of.
static constexpr wchar_t kOwnSystem[] = L"mmgs";
static constexpr const wchar_t* kOwnUnits[] = {L"mm", L"g", L"sec", L"C"};

// clang-format off
static constexpr UnitRow kUnits[] = {
    {"mmKs", L"millimeter Kilogram Sec (mmKs)"},
    {"CGS",  L"Centimeter Gram Second (CGS)"},
    {"mmNs", L"Millimeter Newton Second (mmNs)"},
    {"MKS",  L"Meter Kilogram Second (MKS)"},
    {"IPS",  L"Inch Pound Second (IPS)"},
    {"FPS",  L"Foot Pound Second (FPS)"},
    {"mmgs", kOwnSystem},
};
// clang-format on
static constexpr char kUsualUnits[] = "mmNs";

struct UnitDialog {
    std::wstring report = {};  // path of the last run's
};

struct UnitRequest {
    std::wstring system;  // upper-cased
    bool isOwn = false;
    ProUnitConvertType conversion = PRO_UNITCONVERT_SAME_SIZE;
};

using UnitArray = HostArray<ProUnititem>;

static void FillUnitDialog(UnitDialog& dialog);
static std::wstring ShowCurrentSystem();
static void OnApply(UnitDialog& dialog);
static void OnShowUnitReport(const UnitDialog& dialog);
static bool RequestGet(UnitRequest& request);
static ProError ModelsGet(ModelBatch& batch);
static ProError ChangeUnits(ProMdl model, const UnitRequest& request, UnitArray& units, RunEntry& entry);
static void MakeOwnSystem(ProMdl model, ProUnitConvertType conversion, UnitArray& units);
static ProError PrincipalSet(ProMdl model, ProUnitsystem& system, ProUnitConvertType conversion);

ProError SetUnit() {
    UnitDialog dialog;
    return RunDialog(kUnitDialog,
                     {
                         Pressed<OnApply>("ApplyBt"),
                         Pressed<OnShowUnitReport>("KvShowReport"),
                         Closes("Close"),
                     },
                     dialog, FillUnitDialog);
}

// Begins with the system that the model has and the conversion that leaves its size alone.
static void FillUnitDialog(UnitDialog&) {
    const std::wstring current = UpperCase(ShowCurrentSystem());
    const auto isCurrent = [&current](const UnitRow& row) { return UpperCase(row.system) == current; };
    const UnitRow* row = std::ranges::find_if(kUnits, isCurrent);
    RadioChoiceSet(kUnitDialog, kUnitChoice,
                   std::string(row == std::end(kUnits) ? kUsualUnits : row->choice));
    RadioChoiceSet(kUnitDialog, kConversion, kSameSize);
}

// Its name; empty, and nothing shown, when it cannot be read.
static std::wstring ShowCurrentSystem() {
    ProMdl model = nullptr;
    ProUnitsystem system = {};
    ProError status = ProMdlCurrentGet(&model);
    if (!Failed(status)) status = ProMdlPrincipalunitsystemGet(model, &system);
    std::wstring name = Failed(status) ? std::wstring() : std::wstring(system.name);
    InputTextSet(kUnitDialog, kCurrentSystem, name);
    return name;
}

static void OnApply(UnitDialog& dialog) {
    UnitRequest request;
    if (!RequestGet(request)) {
        ShowMessage(kNothingChosen);
        return;
    }
    ModelBatch batch;
    if (Failed(ModelsGet(batch))) return;

    BatchRun run(kUnitDialog, batch.models.size());
    // One array serves all models. Without it no model gets the own system, but those that have it keep it.
    UnitArray units;
    if (request.isOwn) (void)ArrayAlloc(units, static_cast<int>(std::size(kOwnUnits)));
    ForEachEntry(batch, run, kStepUnits,
                 [&](ProMdl model, RunEntry& entry) { return ChangeUnits(model, request, units, entry); });
    dialog.report = run.ReportPath();
    ShowCurrentSystem();
    TellCount(run, kModelItems);
    ShowCompletion(run, kUnitsSet, ShowInformation);
}

static void OnShowUnitReport(const UnitDialog& dialog) {
    ShowReport(dialog.report);
}

// False without a choice of units and conversion.
static bool RequestGet(UnitRequest& request) {
    const std::string conversion = RadioChoice(kUnitDialog, kConversion);
    const std::string choice = RadioChoice(kUnitDialog, kUnitChoice);
    const UnitRow* row = std::ranges::find(kUnits, std::string_view(choice), &UnitRow::choice);
    if (row == std::end(kUnits) || (conversion != kSameSize && conversion != kSameDimensions)) return false;
    request.system = UpperCase(row->system);
    request.isOwn = row->system == kOwnSystem;
    request.conversion = conversion == kSameSize ? PRO_UNITCONVERT_SAME_SIZE : PRO_UNITCONVERT_SAME_DIMS;
    return true;
}

// The current model, whatever it is, and everything below an assembly.
static ProError ModelsGet(ModelBatch& batch) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = CurrentModelGet(batch.current, type);
    if (!Failed(status) && type == PRO_MDL_ASSEMBLY)
        status = DistinctModels(batch.current, CollectAllComponents, batch.models);
    if (!Failed(status)) AddDistinct(batch.models, batch.current);
    return status;
}

static ProError ChangeUnits(ProMdl model, const UnitRequest& request, UnitArray& units, RunEntry& entry) {
    const wchar_t* step = std::exchange(entry.step, kStepCollect);
    if (request.isOwn && units.Get() != nullptr) MakeOwnSystem(model, request.conversion, units);
    HostArray<ProUnitsystem> systems;
    const ProError status = systems.Received(ProMdlUnitsystemsCollect(model, systems.Receive()));
    if (Failed(status)) return status;
    entry.step = step;
    for (ProUnitsystem& system : Items(systems))
        if (UpperCase(system.name) == request.system) return PrincipalSet(model, system, request.conversion);
    return PRO_TK_E_NOT_FOUND;
}

// Fails for a model that has the system already, which is found by its name afterwards.
static void MakeOwnSystem(ProMdl model, ProUnitConvertType conversion, UnitArray& units) {
    for (std::size_t i = 0; i < std::size(kOwnUnits); ++i)
        if (Failed(ProUnitInit(model, HostText(kOwnUnits[i]), &units.Get()[i]))) return;
    ProUnitsystem system = {};
    ProName name;
    if (Failed(CopyText(kOwnSystem, name))) return;
    if (Failed(ProMdlUnitsystemCreate(model, PRO_UNITSYSTEM_MLT, name, units.Get(), &system))) return;
    (void)PrincipalSet(model, system, conversion);
}

static ProError PrincipalSet(ProMdl model, ProUnitsystem& system, ProUnitConvertType conversion) {
    return ProMdlPrincipalunitsystemSet(model, &system, conversion, PRO_B_TRUE, PRO_VALUE_UNUSED);
}

}  // namespace kv
