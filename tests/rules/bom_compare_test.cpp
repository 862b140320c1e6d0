// Lists compared, and read again from the files that they were written to.

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/natural_order.h"
#include "base/text.h"
#include "bom/bom_changes.h"
#include "bom/bom_compare.h"
#include "bom/bom_csv.h"
#include "bom/bom_earlier.h"
#include "bom/bom_page.h"
#include "bom/bom_pages.h"
#include "office/spreadsheet.h"

namespace {

using kv::BomForm;
using kv::ListChanges;
using kv::ListedRow;
using kv::ListedRows;

// A tree in memory, from which a list is made in depth-first order.
struct Branch {
    ListedRow row;
    std::vector<Branch> below;
};

void Flatten(const Branch& branch, ListedRows& list, unsigned int parent) {
    const auto place = static_cast<unsigned int>(list.rows.size());
    list.rows.push_back(branch.row);
    list.rows.back().parent = list.rows.size() == 1 ? 0 : parent;
    for (const Branch& child : branch.below) Flatten(child, list, place);
}

ListedRows ListOf(const Branch& root) {
    ListedRows list = {BomForm::Levels, {L"模型数量", L"MAT", L"NOTE"}, {}};
    Flatten(root, list, 0);
    return list;
}

class RandomList {
public:
    explicit RandomList(unsigned int seed) : random_(seed) {}

    Branch Tree(int depth) {
        Branch branch = {Row(depth > 0), {}};
        for (int i = Below(6); depth > 0 && i > 0; --i) branch.below.push_back(Tree(Below(depth)));
        return branch;
    }
    // A few changes of every kind, at any place.
    void Change(Branch& branch) {
        std::vector<Branch>& below = branch.below;
        if (Below(3) == 0) branch.row.cells[static_cast<std::size_t>(Below(3))] = Text();
        if (Below(6) == 0) branch.row.name = Name();
        if (!below.empty() && Below(4) == 0)
            below.erase(below.begin() + Below(static_cast<int>(below.size())));
        if (branch.row.isAssembly && Below(4) == 0) below.push_back(Tree(1));
        if (Below(3) == 0) std::shuffle(below.begin(), below.end(), random_);
        if (below.size() > 1 && below.front().row.isAssembly && Below(2) == 0) {
            below.front().below.push_back(below.back());
            below.pop_back();
        }
        for (Branch& child : below) Change(child);
    }

private:
    int Below(int limit) {
        return limit < 1 ? 0 : static_cast<int>(random_() % static_cast<unsigned int>(limit));
    }
    std::wstring Name() { return L"N" + std::to_wstring(Below(12)); }
    std::wstring Text() { return Below(4) == 0 ? L"" : std::to_wstring(Below(5)); }
    ListedRow Row(bool isAssembly) { return {Name(), isAssembly, 0, {Text(), Text(), Text()}}; }

    std::mt19937 random_;
};

TEST(BomCompare, LeadsFromTheOldListToTheNewOne) {
    std::size_t changed = 0;
    for (unsigned int seed = 1; seed <= 500 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomList random(seed);
        Branch tree = random.Tree(3);
        tree.row.isAssembly = true;
        ListedRows before = ListOf(tree);
        random.Change(tree);
        tree.row.isAssembly = true;
        ListedRows after = ListOf(tree);
        if (seed % 2 == 0) {
            // A summed list has no parents.
            for (ListedRows* list : {&before, &after}) {
                list->form = BomForm::Summed;
                for (unsigned int i = 0; i < list->rows.size(); ++i) list->rows[i].parent = i;
            }
        }
        const ListChanges changes = kv::CompareLists(before, after);
        EXPECT_TRUE(kv::ListWithChanges(before, changes) == after);
        changed += changes.changed.size() + changes.came.size() + changes.went.size();
        const ListChanges none = kv::CompareLists(after, after);
        EXPECT_EQ(none.changed.size() + none.came.size() + none.went.size(), 0u);
    }
    EXPECT_GT(changed, 500u) << "the lists hardly differ";
}

Branch Part(const std::wstring& name, const std::wstring& count, const std::wstring& material = L"",
            const std::wstring& note = L"") {
    return {{name, false, 0, {count, material, note}}, {}};
}

Branch Assembly(const std::wstring& name, std::vector<Branch> below) {
    return {{name, true, 0, {L"1", L"", L""}}, std::move(below)};
}

std::vector<std::wstring> Told(const Branch& before, const Branch& after) {
    const ListedRows old = ListOf(before);
    const ListedRows now = ListOf(after);
    std::vector<std::wstring> lines;
    for (const kv::ChangeLine& line : kv::ChangeLines(old, now, kv::CompareLists(old, now))) {
        lines.emplace_back(line.kind);
        for (const std::wstring& text : {line.path, line.name, line.column, line.before, line.after})
            if (!text.empty()) lines.back() += L" " + text;
    }
    return lines;
}

TEST(BomCompare, TellsEachKindOfChange) {
    using Lines = std::vector<std::wstring>;
    const Branch bolt = Part(L"BOLT", L"4", L"steel", L"zinc");
    const Branch plain = Assembly(L"TOP", {Assembly(L"SUB", {bolt}), Part(L"NUT", L"2")});
    EXPECT_EQ(
        Told(plain, Assembly(L"TOP", {Assembly(L"SUB", {Part(L"BOLT", L"6", L"brass", L"zinc")}),
                                      Part(L"NUT", L"2"), Part(L"PIN", L"1")})),
        (Lines{L"数量 TOP/SUB BOLT 模型数量 4 6", L"列 TOP/SUB BOLT MAT steel brass", L"新增 TOP PIN"}));
    EXPECT_EQ(Told(plain, Assembly(L"TOP", {Assembly(L"SUB", {}), Part(L"NUT", L"2"), bolt})),
              (Lines{L"位置 TOP BOLT TOP/SUB TOP"}));
    const Branch sub = Assembly(L"SUB", {bolt}), nut = Part(L"NUT", L"2"), pin = Part(L"PIN", L"1"),
                 ring = Part(L"RING", L"1");
    EXPECT_EQ(Told(Assembly(L"TOP", {sub, nut, pin, ring}), Assembly(L"TOP", {nut, pin, ring, sub})),
              (Lines{L"位置 TOP SUB 第 2 行 第 5 行"}))
        << "what is below follows";
    EXPECT_EQ(Told(plain, Assembly(L"TOP", {Assembly(L"SUB", {Part(L"SCREW", L"4", L"steel", L"black")}),
                                            Part(L"NUT", L"2")})),
              (Lines{L"可能改名 TOP/SUB SCREW BOLT SCREW", L"列 TOP/SUB SCREW NOTE zinc black"}));
    // Two that fit, one cell that is the same, another type: no pair.
    EXPECT_EQ(
        Told(plain,
             Assembly(L"TOP", {Assembly(L"SUB", {Part(L"A", L"4", L"steel"), Part(L"B", L"4", L"steel")}),
                               Part(L"NUT", L"2")})),
        (Lines{L"新增 TOP/SUB A", L"新增 TOP/SUB B", L"删除 TOP/SUB BOLT"}));
    EXPECT_EQ(Told(plain, Assembly(L"TOP", {Assembly(L"SUB", {bolt}), Part(L"NUT2", L"2")})),
              (Lines{L"新增 TOP NUT2", L"删除 TOP NUT"}));
    // Of two that went nobody knows which one came elsewhere.
    const Branch twice =
        Assembly(L"TOP", {Assembly(L"A", {bolt}), Assembly(L"B", {bolt}), Assembly(L"C", {})});
    EXPECT_EQ(Told(twice, Assembly(L"TOP", {Assembly(L"A", {}), Assembly(L"B", {}), Assembly(L"C", {bolt})})),
              (Lines{L"新增 TOP/C BOLT", L"删除 TOP/A BOLT", L"删除 TOP/B BOLT"}));
    // Another name for the top assembly changes nothing below it.
    EXPECT_EQ(Told(plain, Assembly(L"TOP2", {Assembly(L"SUB", {bolt}), Part(L"NUT", L"2")})),
              (Lines{L"可能改名 TOP2 TOP TOP2"}));
}

// ---- Files read again

kv::BomSheet SheetOf(BomForm form) {
    kv::BomSheet sheet;
    sheet.form = form;
    sheet.models = {{nullptr, PRO_MDL_PART, L"BOLT"},
                    {nullptr, PRO_MDL_ASSEMBLY, L"SUB"},
                    {nullptr, PRO_MDL_ASSEMBLY, L"TOP"}};
    sheet.titles = {{"param1", L"A<b>", kv::BomColumn::Parameter},
                    {"param2", L"模型名称", kv::BomColumn::ModelName},
                    {"param3", L"A<b>", kv::BomColumn::Parameter}};
    const std::wstring hard = L"</td>\" 'x'&amp;,\r\n</script><b>; \xD83D\xDE00";
    sheet.parameters = {{hard, {}, L"x"}, {{}, {}, {}}, {L"&#10;", {}, {}}};
    if (form == BomForm::Levels)
        sheet.rows = {{2, 1, 0, 0, 0}, {1, 2, 1, 0, 1}, {0, 3, 2, 1, 2}, {0, 1, 3, 0, 1}};
    else
        sheet.rows = {{1, 2, 0, 0, 0}, {0, 7, 0, 1, 0}};
    return sheet;
}

std::wstring Decoded(const std::string& bytes) {
    std::wstring text;
    EXPECT_EQ(kv::DecodeFile(bytes, text), PRO_TK_NO_ERROR);
    return text;
}

std::string PageOf(const kv::BomSheet& levels, const kv::BomSheet& summed) {
    return kv::BomPage(levels, summed, {L"TOP BOM", L"TOP", L"2026-01-02 03:04", 25}, {"a{}", "let b;"});
}

TEST(BomEarlier, ReadsWhatWasWrittenAndNothingElse) {
    for (const BomForm form : {BomForm::Levels, BomForm::Summed}) {
        const kv::BomSheet sheet = SheetOf(form);
        const ListedRows listed = kv::ListedRowsOf(sheet);
        ListedRows read;
        const std::wstring page = Decoded(PageOf(SheetOf(BomForm::Levels), SheetOf(BomForm::Summed)));
        EXPECT_EQ(kv::EarlierListRead(page, form, read), L"");
        EXPECT_TRUE(read == listed) << "page";

        const std::wstring csv = Decoded(kv::BomCsv(sheet));
        EXPECT_EQ(kv::EarlierListRead(csv, form, read), L"");
        ListedRows without = listed;
        kv::KeepCommonColumns(read, without);
        EXPECT_EQ(without.columns, std::vector<std::wstring>{L"A<b>"}) << "the csv shows no number here";
        EXPECT_TRUE(read == without) << "csv";

        const BomForm other = form == BomForm::Levels ? BomForm::Summed : BomForm::Levels;
        const auto refused = [&](const std::wstring& text, BomForm wanted, const wchar_t* reason) {
            const std::wstring told = kv::EarlierListRead(text, wanted, read);
            EXPECT_NE(told.find(reason), std::wstring::npos) << kv::Utf8Text(told);
        };
        refused(csv, other, L"形式不同");
        refused(csv.substr(0, csv.size() - 1), form, L"不是本命令");
        refused(L"a,b\r\n1,2\r\n", form, L"不是本命令");
        refused(csv + L"9,x,y,z,BOLT,零件,\r\n", form, L"已损坏");
        refused(page.substr(0, page.size() - 12), form, L"不是本命令");
        std::wstring cut = csv;
        refused(cut.replace(cut.find(L"\n1,") + 1, 1, L"2"), form, L"第 1 行已损坏");
        std::wstring damaged = page;
        damaged.replace(damaged.find(L"data-format=\"1\""), 15, L"data-format=\"2\"");
        refused(damaged, form, L"版本不同");
    }
}

// ---- The page's text, the order of cells

TEST(BomPage, HoldsTextsThatNoBrowserTakesForMarkup) {
    const std::string page = PageOf(SheetOf(BomForm::Levels), SheetOf(BomForm::Summed));
    EXPECT_EQ(page.find("</script><b>"), std::string::npos);
    EXPECT_EQ(page.find("<b>"), std::string::npos) << "nor in a title";
    EXPECT_NE(page.find("&lt;/script&gt;&lt;b&gt;"), std::string::npos);
    EXPECT_EQ(kv::PageEscaped({L"\"'&\0\r\n", 6}), "&quot;&#39;&amp;&#65533;&#13;&#10;");
    kv::BomSheet coded = SheetOf(BomForm::Levels);
    coded.titles[1].kind = kv::BomColumn::ItemCode;
    coded.rows.clear();
    EXPECT_NE(PageOf(coded, coded).find("<th class=\"c\">模型名称"), std::string::npos) << "1.10 after 1.9";
    // Known digests of "let b;" and "a{}".
    EXPECT_NE(page.find("script-src 'sha256-hsI9g1gl6FsTzmrcC9WiR+tkeMH1/0jO77fiJQKbJqM='"),
              std::string::npos);
    EXPECT_NE(page.find("style-src 'sha256-X1RutGBrXCt9KkSaXMK7tHftWiRscFHOhxsS8tv8hBk='"),
              std::string::npos);
}

TEST(NaturalOrder, PutsNumbersByValueThenTextsThenNothing) {
    const std::vector<std::wstring> order = {L"-2.5", L"0.12", L"3",    L"10",    L"1.2.3", L"1.2.10", L"9x",
                                             L"m2",   L"M10",  L"M10a", L"M010b", L"螺栓2", L"螺栓10", L""};
    for (std::size_t i = 0; i < order.size(); ++i)
        for (std::size_t j = 0; j < order.size(); ++j) {
            const int found = kv::NaturalCompare(kv::NaturalKeyOf(order[i]), kv::NaturalKeyOf(order[j]));
            EXPECT_EQ(found < 0, i < j) << i << " " << j;
            EXPECT_EQ(found == 0, i == j) << i << " " << j;
        }
    EXPECT_LT(kv::NaturalCompare(kv::NaturalKeyOf(L"1.9", true), kv::NaturalKeyOf(L"1.10", true)), 0);
    EXPECT_TRUE(kv::RowsFitSheet(1048574));
    EXPECT_FALSE(kv::RowsFitSheet(1048575));
}

}  // namespace
