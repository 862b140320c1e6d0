// Relation sets.

#include "params/relation_set.h"

#include <vector>

#include <ProMdl.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static ProError LinesGet(ProRelset& handle, RelationLines& lines);

ProError RelationSetGet(ProMdl model, RelationKind kind, RelationSet& set) {
    const ProError status = ProMdlToModelitem(model, &set.item);
    if (Failed(status)) return status;
    set.kind = kind;
    ProRelset handle = {};
    const ProError looked = kind == RelationKind::Initial ? ProModelitemToRelset(&set.item, &handle)
                                                          : ProRelsetPostregenerationInit(model, &handle);
    // The host names no status for a set that is not there: every failure may mean it.
    set.found = !Failed(looked);
    if (!set.found) return PRO_TK_NO_ERROR;
    set.handle = handle;
    return LinesGet(set.handle, set.lines);
}

ProError RelationSetCreate(RelationSet& set) {
    ProRelset handle = {};
    const ProError status = ProRelsetCreate(&set.item, &handle);
    if (Failed(status)) return status;
    set.handle = handle;
    set.found = true;
    set.kind = RelationKind::Initial;
    return status;
}

ProError RelationSetWrite(RelationSet& set, const RelationLines& lines) {
    std::vector<ProWstring> list;
    list.reserve(lines.size() + 1);
    for (const std::wstring& line : lines) list.push_back(HostText(line.c_str()));
    // One behind the last, so that there is an address even for no line.
    list.push_back(nullptr);
    const ProError status = ProRelsetRelationsSet(&set.handle, list.data(), static_cast<int>(lines.size()));
    // There are hosts that take no empty list; there is another way to the same.
    return Failed(status) && lines.empty() && set.found ? ProRelsetDelete(&set.handle) : status;
}

static ProError LinesGet(ProRelset& handle, RelationLines& lines) {
    HostTexts texts;
    ProError status = ArrayAlloc(texts);
    if (!Failed(status)) status = ProRelsetRelationsGet(&handle, texts.InOut());
    if (Failed(status)) return status;
    int count = 0;
    // What cannot be counted must not pass for nothing.
    status = ProArraySizeGet(texts.Get(), &count);
    if (!Failed(status)) lines.assign(texts.Get(), texts.Get() + count);
    return status;
}

}  // namespace kv
