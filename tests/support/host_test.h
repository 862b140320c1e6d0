// A host without a plug-in, whose functions a test calls as the plug-in calls them.

#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <ProObjects.h>
#include <ProSizeConst.h>
#include <gtest/gtest.h>

#include "simulator/session/session.h"
#include "support/temp_directory.h"

namespace test {

// A host with an empty workspace. Every violation has to be expected with Misuse, and nothing may stay open.
class HostTest : public testing::Test {
protected:
    ~HostTest() override {
        for (const std::string& violation : session.report.Violations()) ADD_FAILURE() << violation;
        for (const std::string& item : session.report.OpenItems()) ADD_FAILURE() << "left open: " << item;
        for (const std::string& problem : session.user.problems) ADD_FAILURE() << problem;
    }

    // True when the calls since the last check were exactly one violation, with this in its text.
    testing::AssertionResult Misuse(const std::string& text) {
        const std::vector<std::string> violations = session.report.Violations();
        session.report.ClearViolations();
        if (violations.size() == 1 && violations[0].find(text) != std::string::npos)
            return testing::AssertionSuccess();
        testing::AssertionResult result = testing::AssertionFailure();
        result << violations.size() << " violations";
        for (const std::string& violation : violations) result << "; " << violation;
        return result;
    }

    sim::SimModel& New(const wchar_t* name, sim::ModelKind kind,
                       sim::ModelSubtype subtype = sim::ModelSubtype::kNone) {
        return *session.models.Create(name, kind, subtype);
    }
    sim::SimModel& Part(const wchar_t* name) { return New(name, sim::ModelKind::kPart); }
    sim::SimModel& Assembly(const wchar_t* name) { return New(name, sim::ModelKind::kAssembly); }

    TempDirectory folder;
    sim::Session session{folder.Path(), folder.Path()};
};

inline ProSolid Solid(sim::SimModel& model) {
    return reinterpret_cast<ProSolid>(&model);
}

// A plug-in's text input in its full buffer.
template <std::size_t size>
struct Buffer {
    explicit Buffer(std::wstring_view content = {}) {
        std::ranges::fill(text, L'#');
        if (content.size() < size) text[content.size()] = L'\0';
        std::ranges::copy(content.substr(0, size), text);
    }
    wchar_t text[size];
};
using Name = Buffer<PRO_NAME_SIZE>;
using Path = Buffer<PRO_PATH_SIZE>;

}  // namespace test
