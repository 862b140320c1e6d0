// Simplified representations of an assembly: thin readers and writers of the host.
#pragma once

#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProSimprep.h>

#include "assembly/rep_rule.h"

namespace kv {

struct NamedRep {
    ProSimprep rep;
    std::wstring name;  // empty for the master and for one whose name cannot be read
    bool isMaster;
};

// The master first. Errors: those of ProSimprepInit and ProSolidSimprepVisit; an assembly without any of its
// own has the master all the same.
[[nodiscard]] ProError RepresentationsGet(ProMdl assembly, std::vector<NamedRep>& reps);

// The representation of this name. Errors: those of ProSimprepInit, PRO_TK_E_NOT_FOUND for none.
[[nodiscard]] ProError RepresentationFind(ProMdl assembly, const std::wstring& name, ProSimprep& rep);

// Makes a representation, or puts it in place of `replaced`. Errors: those of the calls that build it.
[[nodiscard]] ProError RepresentationMake(ProMdl assembly, const std::wstring& name, const RepPlan& plan,
                                          bool keepsOnly, const ProSimprep* replaced, ProSimprep& rep);

// Activates a representation and shows it. Errors: those of ProSimprepActivate.
[[nodiscard]] ProError RepresentationShow(ProMdl assembly, const ProSimprep& rep);

// Makes the master the active representation until it dies.
class MasterRepresentation {
public:
    explicit MasterRepresentation(ProMdl assembly);
    MasterRepresentation(const MasterRepresentation&) = delete;
    MasterRepresentation& operator=(const MasterRepresentation&) = delete;
    // The former one is active again.
    ~MasterRepresentation();

    // Of activating it.
    ProError Status() const { return status_; }
    // Whatever is active now stays so.
    void Keep() { isChanged_ = false; }
    const ProSimprep& Former() const { return former_; }

private:
    ProMdl assembly_;
    ProSimprep former_ = {};
    ProError status_;
    bool isChanged_ = false;
};

}  // namespace kv
