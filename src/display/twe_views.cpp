// TweViews: twelve standard views under names of their own, by a main view that is found from the model's
// size or taken from the screen.

#include "display/twe_views.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <ProArray.h>
#include <ProMdl.h>
#include <ProView.h>
#include <ProWindows.h>

#include "base/host_handle.h"
#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"
#include "display/standard_views.h"
#include "model/current_model.h"
#include "model/model_box.h"
#include "model/run_record.h"
#include "model/run_report.h"
#include "settings/settings_store.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr wchar_t kSettingsInTextDir[] = L"\\KVconfig\\KvConfig.ini";
static constexpr wchar_t kMainViewSetting[] = L"TweViewsUseAutoMainView";
static constexpr wchar_t kAutomatic[] = L"1";
static constexpr wchar_t kStepTurn[] = L"转到视图";
static constexpr wchar_t kStepStore[] = L"保存视图";

static constexpr wchar_t kSolidsOnly[] = L"此功能仅零件/组件/制造环境可用！";
static constexpr wchar_t kNoView[] = L"\t无法读取窗口的当前视图，未保存任何视图！\t";
static constexpr wchar_t kNoMainView[] =
    L"\t无法确定主视图：模型没有几何，或当前视图不是有效的方向。未保存任何视图！\t";
static constexpr wchar_t kViewFailures[] = L"以下标准视图未能保存：";
static constexpr char kViewsMessage[] = "Batch result:%0w";

// Names in capitals, sorted.
using ViewNames = std::vector<std::wstring>;

static ProError MainViewGet(ProMdl model, const ViewMatrix& present, ViewMatrix& main);
static ViewNames SavedViewNames(ProMdl model);
static RunEntry StoreView(ProMdl model, const StandardView& view, const ViewNames& saved);
static ProError StoreUnder(ProMdl model, const wchar_t* name, bool isSaved);
static void TellViews(const RunRecord& record);

ProError TweViews() {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = CurrentSolidGet(model, type);
    if (Failed(status)) return status;
    if (type != PRO_MDL_PART && type != PRO_MDL_ASSEMBLY)
        return ShowFailure(kSolidsOnly, PRO_TK_INVALID_TYPE);
    ViewMatrix present = {};
    ViewMatrix main = {};
    status = CurrentViewGet(present, model);
    if (Failed(status)) return ShowFailure(kNoView, status);
    status = MainViewGet(model, present, main);
    if (Failed(status)) return ShowFailure(kNoMainView, status);

    // The former view is back when there is nothing new to show.
    bool isShown = false;
    const ScopeExit back([&] {
        if (!isShown) (void)CurrentViewReturn(present, model);
    });
    const std::array<StandardView, 12> views = StandardViews(main);
    const ViewNames saved = SavedViewNames(model);
    RunReport report("TweViews");
    RunRecord record;
    for (const StandardView& view : views) {
        record.push_back(StoreView(model, view, saved));
        report.Add(record.back());
    }
    const bool anyStored =
        std::ranges::any_of(record, [](const RunEntry& entry) { return !Failed(entry.status); });
    isShown = anyStored && !Failed(CurrentViewSet(views.front().orientation, model));
    if (isShown) ProViewRefit(model, nullptr);
    ProWindowRepaint(PRO_VALUE_UNUSED);
    TellViews(record);
    return PRO_TK_NO_ERROR;
}

static ProError MainViewGet(ProMdl model, const ViewMatrix& present, ViewMatrix& main) {
    const std::wstring file = TextDirSettingsPath(kSettingsInTextDir);
    if (WithoutBlanks(SettingRead(file, kMainViewSetting, kValueKey)) == kAutomatic) {
        Extents extents = {};
        const ProError status = ModelExtentsGet(model, extents);
        if (!Failed(status)) main = MainViewOf(extents);
        return status;
    }
    const std::optional<ViewMatrix> snapped = SnappedView(present);
    if (!snapped) return PRO_TK_GENERAL_ERROR;
    main = NormalisedView(*snapped);
    return PRO_TK_NO_ERROR;
}

// None where the host names none: what is there is replaced all the same, but not counted.
static ViewNames SavedViewNames(ProMdl model) {
    HostArray<ProLine> names;
    int count = 0;
    ViewNames saved;
    if (Failed(names.Received(ProViewNamesGet(model, names.Receive(), nullptr, &count)))) return saved;
    for (const ProLine& name : Items(names)) saved.push_back(UpperCase(name));
    std::ranges::sort(saved);
    return saved;
}

static RunEntry StoreView(ProMdl model, const StandardView& view, const ViewNames& saved) {
    RunEntry entry = {view.name, kStepTurn};
    entry.status = CurrentViewSet(view.orientation, model);
    if (Failed(entry.status)) return entry;
    entry.step = kStepStore;
    const bool isSaved = std::ranges::binary_search(saved, std::wstring(view.name));
    entry.status = StoreUnder(model, view.name, isSaved);
    entry.replaced = isSaved && !Failed(entry.status);
    return entry;
}

// A host that does not overwrite a view has the old one deleted first.
static ProError StoreUnder(ProMdl model, const wchar_t* name, bool isSaved) {
    ProLine text = {};
    ProView view = nullptr;
    ProError status = CopyText(name, text);
    if (!Failed(status)) status = ProViewStore(model, text, &view);
    if (status != PRO_TK_E_FOUND || !isSaved) return status;
    status = ProViewNameToView(model, text, &view);
    if (!Failed(status)) status = ProViewDelete(model, view);
    return Failed(status) ? status : ProViewStore(model, text, &view);
}

static void TellViews(const RunRecord& record) {
    const auto stored = std::ranges::count(record, PRO_TK_NO_ERROR, &RunEntry::status);
    const auto replaced = std::ranges::count(record, true, &RunEntry::replaced);
    std::wstring text = L"已保存 " + std::to_wstring(stored) + L" 个标准视图";
    if (replaced > 0) text += L"，其中 " + std::to_wstring(replaced) + L" 个替换了原有视图";
    DisplayMessage(kViewsMessage, text.c_str());
    ShowFailures(kViewFailures, record);
}

}  // namespace kv
