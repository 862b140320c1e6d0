#include <ProElement.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// Frees what was added to an element, to any depth.
void DropChildren(Session& host, const Element& element) {
    for (const void* child : element.children) {
        if (const Element* found = host.definitions.elements.Find(host.report, child))
            DropChildren(host, *found);
        host.definitions.elements.Drop(child);
    }
}

}  // namespace

ProError ProElementAlloc(ProElemId name_id, ProElement* p_elem) {
    static const CallSite kSite("ProElementAlloc", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {name_id, Out(p_elem)}, [&](Session& host) -> ProError {
        if (name_id <= 0 || p_elem == nullptr) return PRO_TK_BAD_INPUTS;
        void* handle = host.definitions.elements.New(host.report);
        host.definitions.elements.Find(host.report, handle)->id = name_id;
        *p_elem = static_cast<ProElement>(handle);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProElementFree(ProElement* p_elem) {
    static const CallSite kSite("ProElementFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {p_elem}, [&](Session& host) -> ProError {
        const Element* element =
            p_elem == nullptr ? nullptr : host.definitions.elements.Find(host.report, *p_elem);
        if (element == nullptr) return PRO_TK_BAD_INPUTS;
        if (element->isChild) {
            host.report.Violation("is given an element that belongs to a tree");
            return PRO_TK_BAD_INPUTS;
        }
        DropChildren(host, *element);
        host.definitions.elements.Free(host.report, *p_elem);
        *p_elem = nullptr;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProElementValueSet(ProElement element, ProValue value) {
    static const CallSite kSite("ProElementValueSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {element, value}, [&](Session& host) -> ProError {
        Element* found = host.definitions.elements.Find(host.report, element);
        const ElementValue* content = host.definitions.values.Find(host.report, value);
        if (found == nullptr || content == nullptr || content->type == 0) return PRO_TK_BAD_INPUTS;
        found->value = *content;
        // Whose the value is now is not documented: the plug-in has nothing to do with it any more.
        host.definitions.values.Free(host.report, value);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProElemtreeElementAdd(ProElement elemtree, ProElempath elempath, ProElement elem) {
    static const CallSite kSite("ProElemtreeElementAdd", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {elemtree, elempath, elem}, [&](Session& host) -> ProError {
        Element* parent = host.definitions.elements.Find(host.report, elemtree);
        Element* child = host.definitions.elements.Find(host.report, elem);
        if (parent == nullptr || child == nullptr || parent == child) return PRO_TK_BAD_INPUTS;
        if (elempath != nullptr || child->isChild) {
            host.report.Violation(child->isChild ? "is given an element that belongs to a tree"
                                                 : "is given a path, which the simulator does not follow");
            return PRO_TK_BAD_INPUTS;
        }
        child->isChild = true;
        parent->children.push_back(elem);
        host.definitions.elements.TakeOver(host.report, elem);
        return PRO_TK_NO_ERROR;
    });
}

// ---- Values

ProError ProValueAlloc(ProValue* p_value) {
    static const CallSite kSite("ProValueAlloc", {PRO_TK_BAD_INPUTS, PRO_TK_OUT_OF_MEMORY});
    return Traced(kSite, {Out(p_value)}, [&](Session& host) -> ProError {
        if (p_value == nullptr) return PRO_TK_BAD_INPUTS;
        *p_value = static_cast<ProValue>(host.definitions.values.New(host.report));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProValueFree(ProValue value) {
    static const CallSite kSite("ProValueFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {value}, [&](Session& host) -> ProError {
        return host.definitions.values.Free(host.report, value) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
    });
}

ProError ProValueDataSet(ProValue value, ProValueData* value_data) {
    static const CallSite kSite("ProValueDataSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {value, value_data}, [&](Session& host) -> ProError {
        ElementValue* content = host.definitions.values.Find(host.report, value);
        if (content == nullptr || value_data == nullptr) return PRO_TK_BAD_INPUTS;
        ElementValue data;
        data.type = value_data->type;
        switch (value_data->type) {
            case PRO_VALUE_TYPE_INT:
                data.number = value_data->v.i;
                break;
            case PRO_VALUE_TYPE_WSTRING:
                if (value_data->v.w == nullptr) return PRO_TK_BAD_INPUTS;
                data.text = value_data->v.w;
                break;
            case PRO_VALUE_TYPE_SELECTION:
                if (const Pick* pick = FindPick(host, value_data->v.r))
                    data.selection = *pick;
                else
                    return PRO_TK_BAD_INPUTS;
                break;
            default:
                host.report.Violation("is given a kind of value that the simulator does not have");
                return PRO_TK_BAD_INPUTS;
        }
        *content = data;
        return PRO_TK_NO_ERROR;
    });
}
