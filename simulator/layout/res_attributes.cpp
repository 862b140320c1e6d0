#include "simulator/layout/res_attributes.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

namespace sim {

namespace {

// What an attribute takes.
enum class Takes { kBoolean, kMixed, kInteger, kCount, kPolicy, kReal, kString, kName, kStrings, kCounts };

struct AttributeRule {
    std::string_view name;
    Takes takes;
};
using AttributeRules = std::vector<AttributeRule>;

const AttributeRules kEveryComponent = {
    {"AttachLeft", Takes::kBoolean},   {"AttachRight", Takes::kBoolean},  {"AttachTop", Takes::kBoolean},
    {"AttachBottom", Takes::kBoolean}, {"LeftOffset", Takes::kInteger},   {"RightOffset", Takes::kInteger},
    {"TopOffset", Takes::kInteger},    {"BottomOffset", Takes::kInteger}, {"HelpText", Takes::kString},
    {"Visible", Takes::kBoolean},      {"Sensitive", Takes::kBoolean},    {"PopupMenu", Takes::kName},
};

const AttributeRules kDialogAttributes = {
    {"Label", Takes::kString},         {"DefaultButton", Takes::kString},
    {"Resizeable", Takes::kBoolean},   {"StartLocation", Takes::kCount},
    {"DialogStyle", Takes::kCount},    {"Width", Takes::kCount},
    {"Height", Takes::kCount},         {"RememberPosition", Takes::kBoolean},
    {"RememberSize", Takes::kBoolean}, {"Bitmap", Takes::kString},
    {"LeftOffset", Takes::kInteger},   {"RightOffset", Takes::kInteger},
    {"TopOffset", Takes::kInteger},    {"BottomOffset", Takes::kInteger},
    {"Focus", Takes::kString},         {"AlwaysOnTop", Takes::kBoolean},
    {"Cursor", Takes::kCount},         {"TitleBar", Takes::kBoolean},
};

const AttributeRules kScaleAttributes = {
    {"MinInteger", Takes::kInteger}, {"MaxInteger", Takes::kInteger}, {"Integer", Takes::kInteger},
    {"Length", Takes::kCount},       {"Columns", Takes::kCount},      {"Orientation", Takes::kBoolean},
};

const AttributeRules kMenuAttributes = {{"Label", Takes::kString}, {"Bitmap", Takes::kString}};

const std::map<ComponentKind, AttributeRules> kAttributes = {
    {ComponentKind::kLayout, {{"Label", Takes::kString}, {"Decorated", Takes::kMixed}}},
    {ComponentKind::kPushButton,
     {{"Label", Takes::kString},
      {"Bitmap", Takes::kString},
      {"ButtonStyle", Takes::kCount},
      {"Resizeable", Takes::kBoolean}}},
    {ComponentKind::kCheckButton,
     {{"Label", Takes::kString},
      {"Set", Takes::kBoolean},
      {"MixedValue", Takes::kBoolean},
      {"ButtonStyle", Takes::kCount},
      {"Bitmap", Takes::kString}}},
    {ComponentKind::kRadioGroup,
     {{"Names", Takes::kStrings},
      {"Labels", Takes::kStrings},
      {"SelectedNames", Takes::kStrings},
      {"Orientation", Takes::kBoolean},
      {"ItemHelpText", Takes::kStrings},
      {"ButtonStyle", Takes::kCount}}},
    {ComponentKind::kOptionMenu,
     {{"Names", Takes::kStrings},
      {"Labels", Takes::kStrings},
      {"SelectedNames", Takes::kStrings},
      {"Value", Takes::kString},
      {"Columns", Takes::kCount},
      {"MinColumns", Takes::kCount},
      {"VisibleRows", Takes::kCount},
      {"Editable", Takes::kBoolean},
      {"ItemHelpText", Takes::kStrings},
      {"ItemImage", Takes::kStrings}}},
    {ComponentKind::kInputPanel,
     {{"InputType", Takes::kCount},
      {"Value", Takes::kString},
      {"String", Takes::kString},
      {"Integer", Takes::kInteger},
      {"Double", Takes::kReal},
      {"WideString", Takes::kString},
      {"Columns", Takes::kCount},
      {"MinColumns", Takes::kCount},
      {"MaxLen", Takes::kCount},
      {"Digits", Takes::kCount},
      {"Denominator", Takes::kInteger},
      {"DoubleFormat", Takes::kCount},
      {"Editable", Takes::kBoolean},
      {"Password", Takes::kBoolean},
      {"AutoHighlight", Takes::kBoolean},
      {"AllowTabChars", Takes::kBoolean},
      {"BackgroundColor", Takes::kCount}}},
    {ComponentKind::kTextArea,
     {{"Value", Takes::kString},
      {"Columns", Takes::kCount},
      {"Rows", Takes::kCount},
      {"MinColumns", Takes::kCount},
      {"MinRows", Takes::kCount},
      {"MaxLen", Takes::kCount},
      {"Wrap", Takes::kBoolean},
      {"Editable", Takes::kBoolean}}},
    {ComponentKind::kTable,
     {{"ColumnNames", Takes::kStrings},
      {"ColumnLabels", Takes::kStrings},
      {"RowNames", Takes::kStrings},
      {"RowLabels", Takes::kStrings},
      {"ColumnWidths", Takes::kCounts},
      {"ColumnResizings", Takes::kCounts},
      {"ColumnJustifications", Takes::kCounts},
      {"MinRows", Takes::kCount},
      {"MinColumns", Takes::kCount},
      {"VisibleRows", Takes::kCount},
      {"RowHeight", Takes::kCount},
      {"SelectionPolicy", Takes::kPolicy},
      {"ColumnSelectionPolicy", Takes::kPolicy},
      {"RowSelectionPolicy", Takes::kPolicy},
      {"LockedColumns", Takes::kCount},
      {"SelectedNames", Takes::kStrings},
      {"SelectedColumnNames", Takes::kStrings},
      {"ActivateOnReturn", Takes::kBoolean},
      {"AutoHighlight", Takes::kBoolean},
      {"Alignment", Takes::kCount},
      {"ShowGrid", Takes::kBoolean},
      {"ScrollBarsWhenNeeded", Takes::kBoolean}}},
    {ComponentKind::kList,
     {{"Names", Takes::kStrings},
      {"Labels", Takes::kStrings},
      {"SelectedNames", Takes::kStrings},
      {"Columns", Takes::kCount},
      {"MinRows", Takes::kCount},
      {"VisibleRows", Takes::kCount},
      {"SelectionPolicy", Takes::kPolicy},
      {"ListType", Takes::kCount}}},
    {ComponentKind::kLabel,
     {{"Label", Takes::kString},
      {"Bitmap", Takes::kString},
      {"Alignment", Takes::kCount},
      {"FontStyle", Takes::kCount},
      {"ForegroundColor", Takes::kCount},
      {"Columns", Takes::kCount}}},
    {ComponentKind::kSeparator, {{"Orientation", Takes::kBoolean}}},
    {ComponentKind::kDrawingArea,
     {{"DrawingWidth", Takes::kCount},
      {"DrawingHeight", Takes::kCount},
      {"Images", Takes::kStrings},
      {"BackgroundColor", Takes::kCount},
      {"FgColor", Takes::kCount},
      {"BgColor", Takes::kCount},
      {"Decorated", Takes::kMixed}}},
    {ComponentKind::kProgressBar, kScaleAttributes},
    {ComponentKind::kSlider, kScaleAttributes},
    {ComponentKind::kSpinBox, kScaleAttributes},
    {ComponentKind::kThumbWheel, kScaleAttributes},
    {ComponentKind::kTab, {{"Decorated", Takes::kMixed}, {"SelectedNames", Takes::kStrings}}},
    {ComponentKind::kTree,
     {{"Names", Takes::kStrings},
      {"Labels", Takes::kStrings},
      {"ParentNames", Takes::kStrings},
      {"SelectedNames", Takes::kStrings},
      {"SelectionPolicy", Takes::kPolicy},
      {"TreeLinkStyle", Takes::kCount},
      {"TreeDisplayRoot", Takes::kBoolean},
      {"TreeIndicateChildren", Takes::kBoolean},
      {"VisibleRows", Takes::kCount}}},
    {ComponentKind::kMenuBar, {}},
    {ComponentKind::kMenuPane, kMenuAttributes},
    {ComponentKind::kCascadeButton, kMenuAttributes},
};

// The spellings that files in use have been seen to give; the others follow from the names of the calls.
constexpr std::string_view kMet[] = {
    "Alignment",
    "AlwaysOnTop",
    "AttachBottom",
    "AttachLeft",
    "AttachRight",
    "AttachTop",
    "AutoHighlight",
    "BackgroundColor",
    "Bitmap",
    "BottomOffset",
    "ColumnLabels",
    "ColumnNames",
    "ColumnWidths",
    "Columns",
    "Cursor",
    "Decorated",
    "DefaultButton",
    "DialogStyle",
    "DrawingHeight",
    "DrawingWidth",
    "Editable",
    "Focus",
    "FontStyle",
    "ForegroundColor",
    "HelpText",
    "InputType",
    "Integer",
    "Label",
    "Labels",
    "LeftOffset",
    "Length",
    "LockedColumns",
    "MaxInteger",
    "MaxLen",
    "MinColumns",
    "MinInteger",
    "MinRows",
    "Names",
    "Orientation",
    "PopupMenu",
    "RememberSize",
    "Resizeable",
    "RightOffset",
    "RowLabels",
    "RowNames",
    "Rows",
    "RowSelectionPolicy",
    "ScrollBarsWhenNeeded",
    "SelectionPolicy",
    "Set",
    "ShowGrid",
    "StartLocation",
    "TitleBar",
    "TopOffset",
    "TreeDisplayRoot",
    "TreeIndicateChildren",
    "TreeLinkStyle",
    "Value",
    "Visible",
    "VisibleRows",
    "Width",
    "Wrap",
};

void FindUnmet(const ResAttributes& attributes, ResFindings& findings) {
    for (const auto& [name, attribute] : attributes)
        if (std::ranges::find(kMet, name) == std::end(kMet)) findings.emplace_back(attribute.place, name);
}

const AttributeRule* FindRule(const AttributeRules& rules, std::string_view attribute) {
    const auto rule =
        std::find_if(rules.begin(), rules.end(), [&](const AttributeRule& r) { return r.name == attribute; });
    return rule == rules.end() ? nullptr : &*rule;
}

const char* Expectation(Takes takes) {
    switch (takes) {
        case Takes::kBoolean:
            return "True or False";
        case Takes::kMixed:
            return "True, False or Mixed";
        case Takes::kInteger:
            return "one integer";
        case Takes::kCount:
            return "one integer from 0 on";
        case Takes::kPolicy:
            return "one integer from 0 to 4";
        case Takes::kReal:
            return "one number";
        case Takes::kString:
            return "one text in quotes";
        case Takes::kName:
            return "one name";
        case Takes::kStrings:
            return "texts in quotes";
        case Takes::kCounts:
            return "integers from 0 on";
    }
    return "";
}

bool ValueFits(const ResValue& value, Takes takes) {
    using Type = ResValue::Type;
    switch (takes) {
        case Takes::kBoolean:
            return value.type == Type::kBoolean;
        case Takes::kMixed:
            return value.type == Type::kBoolean || (value.type == Type::kName && value.text == L"Mixed");
        case Takes::kInteger:
            return value.type == Type::kInteger;
        case Takes::kCount:
        case Takes::kCounts:
            return value.type == Type::kInteger && value.number >= 0;
        case Takes::kPolicy:
            return value.type == Type::kInteger && value.number >= 0 && value.number <= 4;
        case Takes::kReal:
            return value.type == Type::kInteger || value.type == Type::kReal;
        case Takes::kString:
        case Takes::kStrings:
            return value.type == Type::kString;
        case Takes::kName:
            return value.type == Type::kName || value.type == Type::kString;
    }
    return false;
}

void CheckValues(const ResAttribute& attribute, const AttributeRule& rule, ResFindings& findings) {
    const std::string expected = std::string(Expectation(rule.takes)) + " for " + std::string(rule.name);
    const bool isList = rule.takes == Takes::kStrings || rule.takes == Takes::kCounts;
    if (!isList && attribute.values.size() != 1) findings.emplace_back(attribute.place, expected);
    for (const ResValue& value : attribute.values)
        if (!ValueFits(value, rule.takes)) findings.emplace_back(value.place, expected);
}

void Check(const ResAttributes& attributes, const AttributeRules& own, const AttributeRules& shared,
           const std::string& owner, ResFindings& findings) {
    for (const auto& [name, attribute] : attributes) {
        const AttributeRule* rule = FindRule(own, name);
        if (rule == nullptr) rule = FindRule(shared, name);
        if (rule == nullptr)
            findings.emplace_back(attribute.place, "an attribute of " + owner + ", found " + name);
        else
            CheckValues(attribute, *rule, findings);
    }
}

}  // namespace

void CheckAttributes(const ResAttributes& attributes, ComponentKind kind, const std::string& owner,
                     ResFindings& findings) {
    Check(attributes, kAttributes.at(kind), kEveryComponent, owner, findings);
}

ResFindings UnmetAttributes(const ResFile& layout) {
    ResFindings findings;
    for (const ResContainer& container : layout.containers) {
        FindUnmet(container.attributes, findings);
        for (const ResComponent& component : container.components) FindUnmet(component.attributes, findings);
    }
    return findings;
}

void CheckDialogAttributes(const ResAttributes& attributes, ResFindings& findings) {
    Check(attributes, kDialogAttributes, {}, "a dialog", findings);
}

}  // namespace sim
