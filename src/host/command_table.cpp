// The command table and how it gets into the host's menu.
//
// Adding a command, say KvThing with a dialog, to the room params. Its row is here already, its icon and menu
// texts too. Seven files make it work and prove it:
//
//   src/params/kv_thing.cpp            ProError KvThing(). Commands that are one flow share a file.
//   src/params/kv_thing.h              its declaration
//   src/host/command_table.cpp         that header included, HostAction<KvThing> in the row. Menu, icon,
//                                      availability, ribbon and tests follow from the row.
//   text/resource/KvThing.res          the dialog's layout; `hostsim dialog KvThing` shows it, and
//                                      `hostsim check` finds its faults
//   KVconfig/KvThing.ini               default settings, UTF-16 with a byte-order mark; none without settings
//   tests/plugin/params_scenarios.cpp  a scenario in which it does all of its work: the fault sweep fails
//                                      each of its host calls in turn. Without one a test fails.
//   tests/plugin/kv_thing_test.cpp     its tests
//
// These tell about it:
//
//   docs/manual/README.md              a line in the table of what works, the same in docs/manual/zh-CN
//   docs/manual/parameters.md          a section, the same in docs/manual/zh-CN
//   CHANGELOG.md                       a line in the user's words
//   tools/demo_steps.sh                a step with its user script in samples/scripts, if it is worth showing
//   tools/pictures.sh                  the dialog's name, if the manual shows its picture
//
// And these only if it needs them:
//
//   a host function that is new        its declaration in toolkit/include, in the header that the vendor has
//                                      it in; its behaviour in simulator/toolkit; what the host's documents
//                                      leave open in simulator/ASSUMPTIONS.md
//   a text in the message area         text/kvmsg_display.txt and text/chinese_cn/kvmsg_display.txt
//   a right-click entry                src/host/popup_menu.cpp
//   a room that is new                 tests/plugin/<room>_scenarios.cpp, declared in
//                                      tests/support/scenario.h and joined in tests/plugin/scenarios.cpp; a
//                                      line in the map of README.md
//   a row that is new                  icons/KvThing.svg; label and help in text/kvMenu.txt and
//                                      text/chinese_cn/kvMenu.txt; kRequired in
//                                      tests/plugin/command_table_test.cpp; docs/icons.png by
//                                      tools/contact_sheet.sh

#include "host/command_table.h"

#include <algorithm>
#include <iterator>

#include <ProMenuBar.h>

#include "assembly/clone_component.h"
#include "assembly/kv_box.h"
#include "assembly/kv_remove_cons.h"
#include "assembly/kv_sim_rep.h"
#include "assembly/merge.h"
#include "assembly/new_component.h"
#include "base/status.h"
#include "base/text.h"
#include "bom/kv_bom.h"
#include "display/batch_color.h"
#include "display/box_selection.h"
#include "display/component_display.h"
#include "display/kv_clear_all_color.h"
#include "display/kv_normal_view.h"
#include "display/transparency.h"
#include "display/twe_views.h"
#include "drawing/kv_dim_modify.h"
#include "drawing/kv_drw_scale_check.h"
#include "drawing/kv_frm_replace.h"
#include "drawing/kv_new_drw.h"
#include "drawing/kv_single_dim.h"
#include "drawing/new_draw.h"
#include "drawing/sheet_scale.h"
#include "export/assembly_export.h"
#include "export/kv_export.h"
#include "export/single_export.h"
#include "folders/kv_backup.h"
#include "folders/kv_open_dir.h"
#include "folders/kv_set_directory.h"
#include "host/about_kv.h"
#include "host/for_test.h"
#include "host/kv_version.h"
#include "params/kv_mdl_count.h"
#include "params/kv_params.h"
#include "params/kv_relations.h"
#include "params/set_bend_table.h"
#include "params/set_mat.h"
#include "params/set_unit.h"
#include "rename/kv_rename.h"
#include "rename/quick_rename.h"
#include "settings/kv_config.h"
#include "ui/prompt.h"

namespace kv {

// The menu's name is also the key of its label.
static constexpr char kMenu[] = "Menu";
static constexpr char kNeighbour[] = "Help";

// clang-format off
static constexpr CommandRow CommandTable[] = {
    // name                     action                             help key                      icon                         available      designated
    {"KvOpenDir",             HostAction<KvOpenDir>,             "KvOpenDir_Help",             "KvOpenDir.png",             AccessAlways,  true},
    {"KvBackup",              HostAction<KvBackup>,              "KvBackup_Help",              "KvBackup.png",              AccessSolid,   true},
    {"NewPart",               HostAction<NewPart>,               "NewPart_Help",               "NewPart.png",               AccessSolid,   true},
    {"NewAsm",                HostAction<NewAsm>,                "NewAsm_Help",                "NewAsm.png",                AccessSolid,   true},
    {"NewSmt",                HostAction<NewSmt>,                "NewSmt_Help",                "NewSmt.png",                AccessSolid,   true},
    {"BatchColor",            HostAction<BatchColor>,            "Color_Help",                 "RandomColor.png",           AccessModel,   true},
    {"KvClearAllColor",       HostAction<KvClearAllColor>,       "KvClearAllColor_Help",       "KvClearAllColor.png",       AccessModel,   true},
    {"KvBoxSelSur",           HostAction<KvBoxSelSur>,           "KvBoxSelSur_Help",           "KvBoxSelSur.png",           AccessModel,   true},
    {"KvTransparent",         HostAction<KvTransparent>,         "KvTransparent_Help",         "KvTransparent.png",         AccessModel,   true},
    {"SurfTransparent",       HostAction<SurfTransparent>,       "SurfTransparent_Help",       "SurfTransparent.png",       AccessModel,   true},
    {"BoxSel",                HostAction<BoxSel>,                "BoxSel_Help",                "BoxSel.png",                AccessSolid,   true},
    {"SetMat",                HostAction<SetMat>,                "SetMat_Help",                "SetMat.png",                AccessPart,    true},
    {"SetBendTable",          HostAction<SetBendTable>,          "SetBendTable_Help",          "SetBendTable.png",          AccessPart,    true},
    {"SameScale",             HostAction<SameScale>,             "SameScale_Help",             "SameScale.png",             AccessDrawing, true},
    {"KvIsolate",             HostAction<KvIsolate>,             "KvIsolate_Help",             "KvIsolate.png",             AccessSolid,   true},
    {"KvHideReverse",         HostAction<KvHideReverse>,         "KvHideReverse_Help",         "KvHideReverse.png",         AccessSolid,   true},
    {"KvShowAllComp",         HostAction<KvShowAllComp>,         "KvShowAllComp_Help",         "KvShowAllComp.png",         AccessSolid,   true},
    {"KvNormalView",          HostAction<KvNormalView>,          "KvNormalView_Help",          "KvNormalView.png",          AccessAlways,  true},
    {"KvParams",              HostAction<KvParams>,              "KvParams_Help",              "KvParams.png",              AccessSolid,   true},
    {"KvRelations",           HostAction<KvRelations>,           "KvRelations_Help",           "KvRelations.png",           AccessSolid,   true},
    {"SetUnit",               HostAction<SetUnit>,               "SetUnit_Help",               "SetUnit.png",               AccessPart,    true},
    {"CloneComp",             HostAction<CloneComp>,             "CloneComp_Help",             "CloneComp.png",             AccessSolid,   true},
    {"CloneAndReplace",       HostAction<CloneAndReplace>,       "CloneAndReplace_Help",       "CloneAndReplace.png",       AccessSolid,   true},
    {"KvMerge",               HostAction<KvMerge>,               "KvMerge_Help",               "KvMerge.png",               AccessSolid,   true},
    {"KvMergeTo",             HostAction<KvMergeTo>,             "KvMergeTo_Help",             "KvMergeTo.png",             AccessSolid,   true},
    {"TweViews",              HostAction<TweViews>,              "TweViews_Help",              "TweViews.png",              AccessModel,   true},
    {"NewDraw",               HostAction<NewDraw>,               "NewDraw_Help",               "NewDraw.png",               AccessModel,   true},
    {"KvExStp",               HostAction<KvExStp>,               "KvExStp_Help",               "KvExStp.png",               AccessSolid,   true},
    {"KvExIgs",               HostAction<KvExIgs>,               "KvExIgs_Help",               "KvExIgs.png",               AccessSolid,   true},
    {"KvExSat",               HostAction<KvExSat>,               "KvExSat_Help",               "KvExSat.png",               AccessSolid,   true},
    {"KvBom",                 HostAction<KvBom>,                 "KvBom_Help",                 "KvBom.png",                 AccessSolid,   true},
    {"KvRename",              HostAction<KvRename>,              "KvRename_Help",              "KvRename.png",              AccessSolid,   true},
    {"KvRemoveCons",          HostAction<KvRemoveCons>,          "KvRemoveCons_Help",          "KvRemoveCons.png",          AccessSolid,   true},
    {"KvExport",              HostAction<KvExport>,              "KvExport_Help",              "KvExport.png",              AccessAlways,  true},
    {"KvMdlCount",            HostAction<KvMdlCount>,            "KvMdlCount_Help",            "KvMdlCount.png",            AccessSolid,   true},
    {"KvNewDrw",              HostAction<KvNewDrw>,              "KvNewDrw_Help",              "KvNewDrw.png",              AccessSolid,   true},
    {"KvDimModify",           HostAction<KvDimModify>,           "KvDimModify_Help",           "KvDimModify.png",           AccessDrawing, true},
    {"KvFrmReplace",          HostAction<KvFrmReplace>,          "KvFrmReplace_Help",          "KvFrmReplace.png",          AccessAlways,  true},
    {"KvDrwScaleCheck",       HostAction<KvDrwScaleCheck>,       "KvDrwScaleCheck_Help",       "KvDrwScaleCheck.png",       AccessAlways,  true},
    {"KvSimRep",              HostAction<KvSimRep>,              "KvSimRep_Help",              "KvSimRep.png",              AccessSolid,   true},
    {"KvBox",                 HostAction<KvBox>,                 "KvBox_Help",                 "KvBox.png",                 AccessSolid,   true},
    {"KvExportDwg",           HostAction<KvExportDwg>,           "KvExportDwg_Help",           "KvExportDwg.png",           AccessDrawing, true},
    {"KvExportPdf",           HostAction<KvExportPdf>,           "KvExportPdf_Help",           "KvExportPdf.png",           AccessDrawing, true},
    {"KvMdlNameCopy",         HostAction<KvMdlNameCopy>,         "KvMdlNameCopy_Help",         "KvMdlNameCopy.png",         AccessSolid,   true},
    {"KvMdlRename",           HostAction<KvMdlRename>,           "KvMdlRename_Help",           "KvMdlRename.png",           AccessSolid,   true},
    {"KvExportStp",           HostAction<KvExportStp>,           "KvExportStp_Help",           "KvExportStp.png",           AccessModel,   true},
    {"KvUpdateSheetScale",    HostAction<KvUpdateSheetScale>,    "KvUpdateSheetScale_Help",    "KvUpdateSheetScale.png",    AccessDrawing, true},
    {"KvUpdateMainViewScale", HostAction<KvUpdateMainViewScale>, "KvUpdateMainViewScale_Help", "KvUpdateMainViewScale.png", AccessDrawing, true},
    {"KvSingleDim",           HostAction<KvSingleDim>,           "KvSingleDim_Help",           "KvSingleDim.png",           AccessDrawing, true},
    {"KvSetDirectory",        HostAction<KvSetDirectory>,        "KvSetDirectory_Help",        "KvSetDirectory.png",        AccessAlways,  true},
    {"KvConfig",              HostAction<KvConfig>,              "KvConfig_Help",              "KvConfig.png",              AccessAlways,  true},
    {"ForTest",               HostAction<ForTest>,               "ForTest_Help",               "ForTest.png",               AccessAlways,  true},
    {"KvVersion",             HostAction<KvVersion>,             "KvVersion_Help",             "KvVersion.png",             AccessAlways,  false},
    {"AboutKv",               HostAction<AboutKv>,               "AboutKv_Help",               "AboutKorvane.png",          AccessAlways,  false},
};
// clang-format on

static void RegisterCommand(const CommandRow& row);

std::span<const CommandRow> Commands() {
    return CommandTable;
}

const CommandRow* FindCommand(std::string_view name) {
    const auto isNamed = [name](const CommandRow& row) { return row.name == name; };
    const CommandRow* row = std::ranges::find_if(CommandTable, isNamed);
    return row == std::end(CommandTable) ? nullptr : row;
}

void RegisterCommands() {
    WithMenuFile([](wchar_t* file) {
        return ProMenubarMenuAdd(HostName(kMenu), HostName(kMenu), HostName(kNeighbour), PRO_B_TRUE, file);
    });
    for (const CommandRow& row : CommandTable) RegisterCommand(row);
}

ProError CommandIdGet(const char* name, CommandAction action, uiCmdPriority priority, AccessRule available,
                      uiCmdCmdId& id) {
    const ProError status =
        ProCmdActionAdd(HostName(name), action, priority, available, PRO_B_FALSE, PRO_B_FALSE, &id);
    // For a name that is registered already the host gives no id.
    return status == PRO_TK_E_FOUND ? ProCmdCmdIdFind(HostName(name), &id) : status;
}

ProError AddMenuButton(const char* menu, const char* button, const char* label, const char* helpKey,
                       uiCmdCmdId id) {
    return WithMenuFile([&](wchar_t* file) {
        return ProMenubarmenuPushbuttonAdd(HostName(menu), HostName(button), HostName(label),
                                           HostName(helpKey), nullptr, PRO_B_TRUE, id, file);
    });
}

// What the host refuses here only makes the command plainer: without button, icon or place on the ribbon.
static void RegisterCommand(const CommandRow& row) {
    uiCmdCmdId id = nullptr;
    if (Failed(CommandIdGet(row.name, row.action, uiProeImmediate, row.available, id))) return;
    AddMenuButton(kMenu, row.name, row.name, row.helpKey, id);
    ProCmdIconSet(id, HostName(row.icon));
    if (!row.designated) return;
    WithMenuFile([&](wchar_t* file) {
        return ProCmdDesignate(id, HostName(row.name), HostName(row.helpKey), HostName(row.name), file);
    });
}

}  // namespace kv
