// Rows of dialogs: which dialogs they fit, and what their actions are given.

#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "ui/dialog_row.h"

namespace {

struct Dialog {
    std::vector<std::string> calls;
};
struct OtherDialog {};

int plainCalls = 0;

void OnPlain() {
    ++plainCalls;
}
void OnData(Dialog& dialog) {
    dialog.calls.emplace_back("data");
}
void OnComponent(Dialog& dialog, const char* component) {
    dialog.calls.emplace_back(component);
}
void OnConstant(const Dialog&) {}

template <typename Row, typename Data>
constexpr bool kFits = std::is_convertible_v<Row, kv::DialogRow<Data>>;

using DataRow = decltype(kv::Pressed<OnData>(""));
using ConstantRow = decltype(kv::Pressed<OnConstant>(""));
using PlainRow = decltype(kv::Pressed<OnPlain>(""));

static_assert(kFits<DataRow, Dialog> && kFits<ConstantRow, Dialog>);
static_assert(!kFits<DataRow, OtherDialog> && !kFits<DataRow, void>);
static_assert(kFits<PlainRow, Dialog> && kFits<PlainRow, void>);

TEST(DialogRow, GivesItsActionTheDataAndTheComponent) {
    const kv::DialogRows<Dialog> rows = {
        kv::Pressed<OnData>("Apply"),
        kv::Chosen<OnComponent>("Scope"),
        kv::Activated<OnPlain>("List"),
    };
    Dialog dialog;
    char component[] = "Scope";
    for (const kv::DialogRow<Dialog>& row : rows) row.action.run(nullptr, component, &dialog);
    EXPECT_EQ(dialog.calls, (std::vector<std::string>{"data", "Scope"}));
    EXPECT_EQ(plainCalls, 1);
}

}  // namespace
