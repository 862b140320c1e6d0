// The choice of the columns.

#include "bom/bom_column_choice.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "base/natural_order.h"
#include "base/number.h"
#include "base/status.h"
#include "base/text.h"
#include "model/parameter.h"
#include "settings/settings_store.h"
#include "ui/clipboard.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/prompt.h"
#include "ui/table.h"

namespace kv {

static constexpr char kChoiceDialog[] = "KvBomColumns";
static constexpr TableName kOfferTable = {kChoiceDialog, "column_list"};
static constexpr char kOfferTick[] = "tick";
static constexpr char kOfferTitle[] = "title";
static constexpr char kOfferModels[] = "models";
static constexpr wchar_t kTick[] = L"√";
static constexpr wchar_t kNoModels[] = L"-";
static constexpr wchar_t kNothingToChoose[] = L"\t表格中没有数据，请先载入清单\t";
static constexpr wchar_t kLineTooLong[] = L"\t列设置超过254个字符，未复制！\t";
static constexpr wchar_t kNotCopied[] = L"\t剪贴板被其他程序占用，未复制\t";
static constexpr char kCopyTold[] = "Batch result:%0w";
static constexpr wchar_t kCopied[] = L"列设置已复制，可在“编辑列设置”后粘贴";

struct ChoiceState {
    std::vector<ColumnOffer>
        offers;  // in the shown order; the table's rows are named by their places, from 1
    bool isApplied = false;
};

static std::vector<std::vector<std::wstring>> ListedParameters(const BomSheet& sheet);
static void FillOffers(ChoiceState& state);
static void ShowOffer(const ChoiceState& state, std::size_t place);
static void OnTick(ChoiceState& state);
static void OnMove(ChoiceState& state, const char* component);
static void OnCopySettings(ChoiceState& state);
static void OnApplyColumns(ChoiceState& state);
static std::vector<std::wstring> ChosenTitles(const ChoiceState& state);
static bool ChosenPlaceGet(const ChoiceState& state, std::size_t& place);

static constexpr char kUpButton[] = "KvColumnUp";
static constexpr char kDownButton[] = "KvColumnDown";

bool BomColumnsChoose(const BomSheet& sheet, std::vector<std::wstring>& titles) {
    if (sheet.rows.empty()) {
        ShowMessage(kNothingToChoose);
        return false;
    }
    ChoiceState state;
    state.offers = ColumnOffersOf(sheet, ListedParameters(sheet));
    const ProError status = RunDialog(kChoiceDialog,
                                      {
                                          Activated<OnTick>(kOfferTable.component),
                                          Pressed<OnTick>("KvColumnTick"),
                                          Pressed<OnMove>(kUpButton),
                                          Pressed<OnMove>(kDownButton),
                                          Pressed<OnCopySettings>("KvColumnCopy"),
                                          Pressed<OnApplyColumns>("ApplyBt"),
                                          Closes("Close"),
                                      },
                                      state, FillOffers);
    if (Failed(status) || !state.isApplied) return false;
    titles = ChosenTitles(state);
    return true;
}

std::vector<ColumnOffer> ColumnOffersOf(const BomSheet& sheet,
                                        const std::vector<std::vector<std::wstring>>& parameters) {
    std::unordered_map<std::wstring, ColumnOffer> found;  // by upper-case name
    for (const std::vector<std::wstring>& names : parameters) {
        std::set<std::wstring> own;
        for (const std::wstring& name : names) {
            if (!own.insert(UpperCase(name)).second) continue;
            ColumnOffer& offer = found[UpperCase(name)];
            if (++offer.models == 1) offer.title = name;
        }
    }
    std::vector<ColumnOffer> offers;
    for (const BomTitle& title : sheet.titles) {
        const bool isReserved = title.kind != BomColumn::Parameter;
        const auto parameter = isReserved ? found.end() : found.find(UpperCase(title.title));
        offers.push_back(
            {title.title, parameter == found.end() ? 0 : parameter->second.models, isReserved, true});
        if (parameter != found.end()) found.erase(parameter);
    }
    for (const std::wstring_view title : {kBomNameTitle, kBomQuantityTitle, kBomLevelTitle, kBomCodeTitle}) {
        if (BomColumnOf(title, sheet.form) == BomColumn::Parameter) continue;
        found.erase(std::wstring(title));
        const auto isIt = [&](const ColumnOffer& offer) { return offer.title == title; };
        if (std::ranges::none_of(offers, isIt)) offers.push_back({std::wstring(title), 0, true, false});
    }
    const auto others = static_cast<std::ptrdiff_t>(offers.size());
    for (auto& [key, offer] : found) offers.push_back(std::move(offer));
    std::sort(offers.begin() + others, offers.end(), [](const ColumnOffer& one, const ColumnOffer& other) {
        return NaturalCompare(NaturalKeyOf(one.title), NaturalKeyOf(other.title)) < 0;
    });
    return offers;
}

// A model whose parameters cannot be read has none to offer.
static std::vector<std::vector<std::wstring>> ListedParameters(const BomSheet& sheet) {
    std::vector<std::vector<std::wstring>> parameters;
    std::vector<bool> known(sheet.models.size());
    for (const BomRow& row : sheet.rows) {
        if (known[row.model]) continue;
        known[row.model] = true;
        std::vector<std::wstring> names;
        if (!Failed(ParameterNamesGet(sheet.models[row.model].model, names)))
            parameters.push_back(std::move(names));
    }
    return parameters;
}

static void FillOffers(ChoiceState& state) {
    if (Failed(TableRowsNumber(kOfferTable, state.offers.size()))) return;
    for (std::size_t place = 0; place < state.offers.size(); ++place) ShowOffer(state, place);
}

static void ShowOffer(const ChoiceState& state, std::size_t place) {
    const ColumnOffer& offer = state.offers[place];
    const std::string row = std::to_string(place + 1);
    CellTextSet(kOfferTable, row, kOfferTick, offer.isChosen ? kTick : L"");
    CellTextSet(kOfferTable, row, kOfferTitle, offer.title);
    CellTextSet(kOfferTable, row, kOfferModels, offer.isReserved ? kNoModels : std::to_wstring(offer.models));
}

static void OnTick(ChoiceState& state) {
    std::size_t place = 0;
    if (!ChosenPlaceGet(state, place)) return;
    state.offers[place].isChosen = !state.offers[place].isChosen;
    ShowOffer(state, place);
}

// The selection goes along.
static void OnMove(ChoiceState& state, const char* component) {
    const bool isUp = std::string_view(component) == kUpButton;
    std::size_t place = 0;
    if (!ChosenPlaceGet(state, place)) return;
    if (isUp ? place == 0 : place + 1 == state.offers.size()) return;
    const std::size_t target = isUp ? place - 1 : place + 1;
    std::swap(state.offers[place], state.offers[target]);
    ShowOffer(state, place);
    ShowOffer(state, target);
    (void)TableCellSelect(kOfferTable, std::to_string(target + 1), kOfferTitle);
}

static void OnCopySettings(ChoiceState& state) {
    std::wstring line;
    for (const std::wstring& title : ChosenTitles(state))
        line.append(line.empty() ? L"" : L",").append(title);
    if (line.size() > kLongestSetting) {
        ShowMessage(kLineTooLong);
        return;
    }
    if (Failed(ClipboardTextSet(std::wstring(kContentKey) + L"=" + line)))
        ShowMessage(kNotCopied);
    else
        DisplayMessage(kCopyTold, kCopied);
}

static void OnApplyColumns(ChoiceState& state) {
    state.isApplied = true;
    DialogClose(kChoiceDialog);
}

static std::vector<std::wstring> ChosenTitles(const ChoiceState& state) {
    std::vector<std::wstring> titles;
    for (const ColumnOffer& offer : state.offers)
        if (offer.isChosen) titles.push_back(offer.title);
    return titles;
}

// False without a selected row.
static bool ChosenPlaceGet(const ChoiceState& state, std::size_t& place) {
    const std::string row = SelectedRow(kOfferTable);
    int number = 0;
    if (Failed(IntegerFromText(WideName(row), number)) || number < 1) return false;
    place = static_cast<std::size_t>(number) - 1;
    return place < state.offers.size();
}

}  // namespace kv
