// BatchColor: a random colour for every part.
//
// The colours come from one of two tables among the settings. What each part looked like is written to a file
// of the user's before the first is changed: no host call takes a colour back.

#include "display/batch_color.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cwchar>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProModelitem.h>
#include <ProSolid.h>
#include <ProSurface.h>
#include <ProWindows.h>

#include "base/csv.h"
#include "base/host_callback.h"
#include "base/run_file.h"
#include "base/status.h"
#include "display/appearance.h"
#include "display/colour_table.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/model_walk.h"
#include "model/refusals.h"
#include "settings/settings_store.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kColourCommand[] = "BatchColor";
static constexpr wchar_t kTableSetting[] = L"KvRandomColorOpt";
static constexpr wchar_t kSecondTable[] = L"1";
static constexpr wchar_t kMutedColours[] = L"KVconfig\\KvColor0.ini";
static constexpr wchar_t kVividColours[] = L"KVconfig\\KvColor1.ini";
static constexpr wchar_t kColourSection[] = L"Color";
// A table is read section by section.
static constexpr std::size_t kMostColours = 1000;
static constexpr wchar_t kColourFolder[] = L"colors";
static constexpr double kFullColour = 255;

static constexpr wchar_t kStepReadColour[] = L"读取颜色";
static constexpr wchar_t kStepHasColour[] = L"已有颜色";
static constexpr wchar_t kStepColour[] = L"设置颜色";
static constexpr wchar_t kSurfacesNote[] = L"有单独着色的曲面，外观可能不变";

static constexpr wchar_t kDamagedColour[] = L"\t颜色表有误，未做任何更改：\t\n";
static constexpr wchar_t kNoColours[] = L"\t颜色表中没有颜色，未做任何更改：\t\n";
static constexpr wchar_t kNoColourFile[] = L"\t无法保存原有颜色的记录，未做任何更改！\t";
static constexpr wchar_t kColourFailures[] = L"以下零件未能设置颜色：";
static constexpr char kColourMessage[] = "Batch result:%0w";

struct ColouredPart {
    ProModelitem item;
    std::wstring name;
    ProError status;  // of reading its colour
    std::optional<Appearance> look;
};

static ProError PartsGet(std::vector<ColouredPart>& parts);
static ColouredPart PartOf(ProMdl model);
static ProError TableRead(std::vector<Colour>& table);
static UserAnswer AskWhich(const std::vector<ColouredPart>& parts);
static ProError OldColoursWrite(const std::vector<ColouredPart>& parts);
static std::wstring ColourText(const Appearance& look);
static std::vector<std::size_t> Draw(const std::vector<ColouredPart>& parts, bool all,
                                     const std::vector<Colour>& table);
static std::size_t PlaceIn(const std::vector<Colour>& table, const Appearance& look);
static void Paint(BatchRun& run, const ColouredPart& part, const Colour* colour, std::size_t& unseen);
static ProError ColourSet(ColouredPart part, const Colour& colour);
static bool HasColouredSurface(ProMdl part);
static ProError OnColouredSurface(ProSurface surface, ProError status, ProAppData data);
static void TellResult(const BatchRun& run, std::size_t unseen);

ProError BatchColor() {
    std::vector<ColouredPart> parts;
    ProError status = PartsGet(parts);
    if (Failed(status)) return status;
    if (parts.empty()) return ShowFailure(kNoSuitableComponents, PRO_TK_E_NOT_FOUND);
    std::vector<Colour> table;
    status = TableRead(table);
    if (Failed(status)) return status;
    const UserAnswer which = AskWhich(parts);
    if (which == UserAnswer::Cancel) return PRO_TK_NO_ERROR;
    if (Failed(OldColoursWrite(parts))) return ShowFailure(kNoColourFile, PRO_TK_CANT_WRITE);

    const std::vector<std::size_t> drawn = Draw(parts, which == UserAnswer::Yes, table);
    BatchRun run(kColourCommand, parts.size());
    std::size_t unseen = 0;
    for (std::size_t i = 0; i < parts.size(); ++i)
        Paint(run, parts[i], drawn[i] < table.size() ? &table[drawn[i]] : nullptr, unseen);
    ProWindowRepaint(PRO_VALUE_UNUSED);
    TellResult(run, unseen);
    return PRO_TK_NO_ERROR;
}

// ---- What there is

// The current part, or the distinct parts below the current assembly in the order of first meeting.
static ProError PartsGet(std::vector<ColouredPart>& parts) {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = CurrentSolidGet(model, type);
    if (Failed(status)) return status;
    if (type == PRO_MDL_PART) {
        parts.push_back(PartOf(model));
        return PRO_TK_NO_ERROR;
    }
    if (type != PRO_MDL_ASSEMBLY) return PRO_TK_INVALID_TYPE;
    WalkResult walk;
    status = ModelWalk(model, CollectPartComponents, walk);
    if (Failed(status)) return status;
    for (const DistinctModel& part : walk.distinct) parts.push_back(PartOf(part.model));
    return PRO_TK_NO_ERROR;
}

static ColouredPart PartOf(ProMdl model) {
    ColouredPart part = {{PRO_TYPE_INVALID, PRO_VALUE_UNUSED, model}, {}, PRO_TK_NO_ERROR, std::nullopt};
    part.status = ModelNameGet(model, part.name);
    if (!Failed(part.status)) part.status = ProMdlToModelitem(model, &part.item);
    if (Failed(part.status)) return part;
    Appearance look = {};
    part.status = ProSurfaceSideAppearancepropsGet(&part.item, kOutside, &look);
    if (!Failed(part.status)) part.look = look;
    if (HasNoAppearance(part.status)) part.status = PRO_TK_NO_ERROR;
    return part;
}

// A damaged colour, or a table without any, is shown. Errors: PRO_TK_INVALID_FILE.
static ProError TableRead(std::vector<Colour>& table) {
    const std::wstring choice = SettingRead(SettingsPath(kCommonSettings), kTableSetting, kValueKey);
    const std::wstring path = SettingsPath(choice == kSecondTable ? kVividColours : kMutedColours);
    while (table.size() < kMostColours) {
        const std::wstring section = kColourSection + std::to_wstring(table.size() + 1);
        const std::wstring text = SettingRead(path, section.c_str(), kContentKey);
        if (text.empty()) break;
        const std::optional<Colour> colour = ColourFromText(text);
        if (!colour) {
            std::wstring damage = kDamagedColour + path;
            damage.append(L"\n[").append(section).append(L"] ").append(text);
            return ShowFailure(damage.c_str(), PRO_TK_INVALID_FILE);
        }
        table.push_back(*colour);
    }
    return table.empty() ? ShowFailure((kNoColours + path).c_str(), PRO_TK_INVALID_FILE) : PRO_TK_NO_ERROR;
}

static UserAnswer AskWhich(const std::vector<ColouredPart>& parts) {
    const auto coloured =
        std::ranges::count_if(parts, [](const ColouredPart& part) { return part.look.has_value(); });
    const std::wstring text = L"共有 " + std::to_wstring(parts.size()) + L" 个零件，其中 " +
                              std::to_wstring(coloured) +
                              L" 个已有自己的颜色。\n\n是：为全部零件设置随机颜色\n"
                              L"否：只为没有颜色的零件设置\n取消：不做更改";
    return AskUserOrCancel(text.c_str());
}

// ---- What there was

// Errors: those of RunFile.
static ProError OldColoursWrite(const std::vector<ColouredPart>& parts) {
    RunFile file;
    ProError status = file.Create(kColourFolder, kColourCommand);
    if (!Failed(status)) status = file.RowWrite(std::array<std::wstring, 2>{L"模型", L"原颜色"});
    for (const ColouredPart& part : parts) {
        if (Failed(part.status)) continue;
        const std::wstring colour = part.look ? ColourText(*part.look) : std::wstring();
        if (!Failed(status))
            status = file.RowWrite(std::array<std::wstring, 2>{HarmlessCell(part.name), colour});
    }
    return Failed(status) ? status : file.Flush();
}

// "158.1,173.4,191.25" with a point on every machine; empty for none.
static std::wstring ColourText(const Appearance& look) {
    std::wstring text;
    for (const double share : look.color_rgb) {
        const auto hundredths = std::llround(share * kFullColour * 100);
        std::array<wchar_t, 32> number = {};
        std::swprintf(number.data(), number.size(), L"%lld.%02lld", hundredths / 100, hundredths % 100);
        text.append(text.empty() ? L"" : L",").append(number.data());
    }
    return text;
}

// ---- What there will be

// By place in the table; its size for a part that stays as it is.
static std::vector<std::size_t> Draw(const std::vector<ColouredPart>& parts, bool all,
                                     const std::vector<Colour>& table) {
    std::vector<std::optional<std::size_t>> taken;
    for (const ColouredPart& part : parts) {
        const bool stays = Failed(part.status) || (part.look && !all);
        taken.push_back(stays ? std::optional(part.look ? PlaceIn(table, *part.look) : table.size())
                              : std::nullopt);
    }
    std::random_device seed;
    std::minstd_rand numbers(seed());
    return ColoursDrawn(taken, table.size(), [&numbers](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(numbers);
    });
}

static std::size_t PlaceIn(const std::vector<Colour>& table, const Appearance& look) {
    Colour present = {};
    for (std::size_t i = 0; i < present.size(); ++i)
        present[i] = static_cast<int>(std::lround(look.color_rgb[i] * kFullColour));
    return static_cast<std::size_t>(std::ranges::find(table, present) - table.begin());
}

// colour  null for a part that stays as it is
// unseen  grows by a part that may look as before
static void Paint(BatchRun& run, const ColouredPart& part, const Colour* colour, std::size_t& unseen) {
    if (!run.Begin(part.name)) return;
    RunEntry entry = {part.name, kStepColour, part.status};
    if (Failed(part.status)) {
        entry.step = kStepReadColour;
    } else if (colour == nullptr) {
        entry.step = kStepHasColour;
        entry.skipped = true;
    } else {
        entry.status = ColourSet(part, *colour);
        const bool isUnseen = !Failed(entry.status) && HasColouredSurface(part.item.owner);
        if (isUnseen) entry.note = kSurfacesNote;
        unseen += isUnseen ? 1 : 0;
    }
    run.Add(std::move(entry));
}

// All but the colour stays as it is.
static ProError ColourSet(ColouredPart part, const Colour& colour) {
    Appearance look = {};
    const ProError status = part.look ? PRO_TK_NO_ERROR : DefaultAppearanceGet(look);
    if (Failed(status)) return status;
    if (part.look) look = *part.look;
    for (std::size_t i = 0; i < colour.size(); ++i) look.color_rgb[i] = colour[i] / kFullColour;
    return ProSurfaceSideAppearancepropsSet(&part.item, kOutside, &look);
}

// The colour of a surface is seen in place of its part's. What cannot be read counts as none.
static bool HasColouredSurface(ProMdl part) {
    ProModelitem surface = {PRO_SURFACE, PRO_VALUE_UNUSED, part};
    return ProSolidSurfaceVisit(static_cast<ProSolid>(part), HostCallback<OnColouredSurface>, nullptr,
                                &surface) == PRO_TK_E_FOUND;
}

// Ends the visit at the first one.
static ProError OnColouredSurface(ProSurface surface, ProError, ProAppData data) {
    auto& item = *static_cast<ProModelitem*>(data);
    Appearance look = {};
    ProError status = ProSurfaceIdGet(surface, &item.id);
    if (!Failed(status)) status = ProSurfaceSideAppearancepropsGet(&item, kOutside, &look);
    return Failed(status) ? PRO_TK_NO_ERROR : PRO_TK_E_FOUND;
}

static void TellResult(const BatchRun& run, std::size_t unseen) {
    TellCount(run, kModelItems);
    if (unseen > 0)
        DisplayMessage(kColourMessage, (std::to_wstring(unseen) + L" 个零件" + kSurfacesNote).c_str());
    ShowCancelled(run);
    if (!run.Cancelled()) ShowFailures(kColourFailures, run.Record());
}

}  // namespace kv
