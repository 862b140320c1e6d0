#include "simulator/session/session.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace sim {

namespace {
Session* current = nullptr;
}

Session::Session(std::filesystem::path workingDirectory, std::filesystem::path textDirectory)
    : models(std::move(workingDirectory)), texts(std::move(textDirectory), report) {
    if (current != nullptr) {
        std::fputs("hostsim: a second session in one process\n", stderr);
        std::abort();
    }
    current = this;
}

Session::~Session() {
    current = nullptr;
}

void Session::BeAsDocumented() {
    strict.newModelHasExtension = false;
    strict.outputPathRefused = true;
    strict.bareProfileNameRefused = true;
    strict.pdfSheetRangeIsText = true;
    strict.emptyRelationsRefused = true;
    strict.exportsLeaveLog = true;
    strict.pathAsNameRefused = true;
    strict.templateExtensionRefused = true;
    strict.hiddenSheetRefused = true;
    strict.formatIsNoDrawing = true;
    strict.referenceNeedsTopPath = true;
    strict.mergeNeedsPath = true;
    strict.mergeNeedsPlacementBeside = true;
    strict.eraseWaits = true;
    strict.featuresHide = false;
    strict.scaledViewRefused = true;
    screen.strict.nonAsciiButtonNameRefused = true;
    screen.strict.unsetCellRefused = true;
    texts.upperCaseMessageFileRefused = true;
}

Session& Host() {
    if (current == nullptr) {
        std::fputs("hostsim: a host function was called while no host runs\n", stderr);
        std::abort();
    }
    return *current;
}

}  // namespace sim
