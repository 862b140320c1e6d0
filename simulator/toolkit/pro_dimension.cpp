#include <ProDimension.h>

#include <string>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

constexpr std::size_t kLongestLine = PRO_LINE_SIZE - 1;

struct FoundDimension {
    SimModel* owner = nullptr;
    Dimension* dimension = nullptr;
};

// Null for NULL and, with a violation, for an item that is no dimension of its owner.
FoundDimension FindDimension(Session& host, const ProDimension* item) {
    if (item == nullptr) return {};
    SimModel* owner = FindModel(host, item->owner);
    if (owner == nullptr) return {};
    std::vector<Dimension>& dimensions = owner->Dimensions();
    const auto place = static_cast<std::size_t>(item->id) - 1;
    const bool isKind = item->type == PRO_DIMENSION || item->type == PRO_REF_DIMENSION;
    if (isKind && place < dimensions.size() &&
        dimensions[place].isReference == (item->type == PRO_REF_DIMENSION))
        return {owner, &dimensions[place]};
    host.report.Violation("is given a dimension that " + Utf8(owner->Name()) + " does not have");
    return {};
}

// The lines of a call. False, with a violation, for an array of something else.
bool ReadLines(Session& host, wchar_t** text, std::vector<std::wstring>& lines) {
    const HostBlock* block = host.memory.Find({BlockKind::kArray}, text);
    if (block == nullptr) return false;
    bool isWhole = block->elementSize == sizeof(wchar_t*);
    for (std::size_t i = 0; isWhole && i < block->count; ++i) {
        isWhole = text[i] != nullptr;
        if (isWhole) lines.emplace_back(text[i]);
    }
    if (!isWhole) host.report.Violation("is given an array of something else than strings");
    return isWhole;
}

// What the host takes for the text of a dimension.
bool IsText(const std::vector<std::wstring>& lines) {
    std::size_t tokens = 0;
    for (const std::wstring& line : lines) {
        if (line.size() > kLongestLine || line.find(L'\n') != std::wstring::npos) return false;
        for (const wchar_t* token : {L"@D", L"@O", L"@S"})
            if (line.find(token) != std::wstring::npos) ++tokens;
    }
    return tokens > 0;
}

}  // namespace

ProError ProDimensionTextWstringsGet(ProDimension* dimension, wchar_t*** p_text) {
    static const CallSite kSite("ProDimensionTextWstringsGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {dimension, Out(p_text)}, [&](Session& host) -> ProError {
        const FoundDimension found = FindDimension(host, dimension);
        if (found.dimension == nullptr || p_text == nullptr) return PRO_TK_BAD_INPUTS;
        if (found.dimension->text.empty()) return PRO_TK_E_NOT_FOUND;
        std::vector<wchar_t*> lines;
        for (const std::wstring& line : found.dimension->text)
            lines.push_back(NewHostString(host.memory, line));
        *p_text = NewHostArray(host.memory, lines);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDimensionTextWstringsSet(ProDimension* dimension, wchar_t** text) {
    static const CallSite kSite("ProDimensionTextWstringsSet", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {dimension, text}, [&](Session& host) -> ProError {
        const FoundDimension found = FindDimension(host, dimension);
        std::vector<std::wstring> lines;
        if (found.dimension == nullptr || !ReadLines(host, text, lines)) return PRO_TK_BAD_INPUTS;
        if (found.owner->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (!IsText(lines)) return PRO_TK_GENERAL_ERROR;
        found.dimension->text = std::move(lines);
        found.owner->SetModified(true);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDimensionSymbolGet(ProDimension* dimension, ProName symbol) {
    static const CallSite kSite("ProDimensionSymbolGet", {});
    return Traced(kSite, {dimension, Out(symbol, PRO_NAME_SIZE)}, [&](Session& host) -> ProError {
        const FoundDimension found = FindDimension(host, dimension);
        const bool isGiven =
            found.dimension != nullptr && FillBuffer<wchar_t>(found.dimension->symbol, symbol, PRO_NAME_SIZE);
        return isGiven ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProDimensionValueGet(ProDimension* dimension, double* value) {
    static const CallSite kSite("ProDimensionValueGet", {});
    return Traced(kSite, {dimension, Out(value)}, [&](Session& host) -> ProError {
        const FoundDimension found = FindDimension(host, dimension);
        if (found.dimension == nullptr || value == nullptr) return PRO_TK_GENERAL_ERROR;
        *value = found.dimension->value;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDimensionValuedisplayGet(ProDimension* dimension, ProDimensionValueDisplay* display) {
    static const CallSite kSite("ProDimensionValuedisplayGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dimension, Out(display)}, [&](Session& host) -> ProError {
        const FoundDimension found = FindDimension(host, dimension);
        if (found.dimension == nullptr || display == nullptr) return PRO_TK_BAD_INPUTS;
        *display = static_cast<ProDimensionValueDisplay>(found.dimension->valueDisplay);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDimensionValuedisplaySet(ProDimension* dimension, ProDimensionValueDisplay display) {
    static const CallSite kSite("ProDimensionValuedisplaySet", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {dimension, display}, [&](Session& host) -> ProError {
        const FoundDimension found = FindDimension(host, dimension);
        if (found.dimension == nullptr) return PRO_TK_BAD_INPUTS;
        if (display < PRO_DIMVALUEDISPLAY_NOMINAL || display > PRO_DIMVALUEDISPLAY_HIDE)
            return PRO_TK_BAD_INPUTS;
        if (found.owner->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        found.dimension->valueDisplay = display;
        found.owner->SetModified(true);
        return PRO_TK_NO_ERROR;
    });
}
