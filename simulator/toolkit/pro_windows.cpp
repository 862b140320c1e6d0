#include <ProWindows.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProObjectwindowMdlnameCreate(ProMdlName object_name, ProType object_type, int* p_window_id) {
    static const CallSite kSite("ProObjectwindowMdlnameCreate",
                                {PRO_TK_INVALID_TYPE, PRO_TK_BAD_INPUTS, PRO_TK_E_DEADLOCK});
    return Traced(kSite, {object_name, object_type, Out(p_window_id)}, [&](Session& host) -> ProError {
        const auto name = TextInput(host, object_name, PRO_MDLNAME_SIZE);
        if (!name || p_window_id == nullptr) return PRO_TK_BAD_INPUTS;
        const auto kind = KindFromType(object_type);
        if (!kind) return PRO_TK_INVALID_TYPE;
        SimModel* model = host.models.Find(*name, *kind);
        if (model == nullptr || host.desk.IsDoomed(*model)) return PRO_TK_BAD_INPUTS;
        *p_window_id = host.desk.WindowFor(*model);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProWindowActivate(int window) {
    static const CallSite kSite("ProWindowActivate", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {window}, [&](Session& host) -> ProError {
        if (!host.desk.HasWindow(window)) return PRO_TK_BAD_INPUTS;
        host.desk.ActivateLater(window);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProWindowCurrentSet(int window_id) {
    static const CallSite kSite("ProWindowCurrentSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {window_id}, [&](Session& host) -> ProError {
        if (!host.desk.HasWindow(window_id)) return PRO_TK_BAD_INPUTS;
        host.desk.SetCurrent(window_id);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProWindowMdlGet(int window, ProMdl* r_mdl) {
    static const CallSite kSite("ProWindowMdlGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {window, Out(r_mdl)}, [&](Session& host) -> ProError {
        // Whoever asks for the current window has the desk see what the user has opened.
        (void)host.desk.CurrentWindow();
        SimModel* model = host.desk.ModelIn(window);
        if (model == nullptr || r_mdl == nullptr) return PRO_TK_BAD_INPUTS;
        *r_mdl = model;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProWindowDelete(int window_id) {
    static const CallSite kSite("ProWindowDelete", {PRO_TK_BAD_INPUTS, PRO_TK_BAD_CONTEXT});
    return Traced(kSite, {window_id}, [&](Session& host) -> ProError {
        if (!host.desk.HasWindow(window_id)) return PRO_TK_BAD_INPUTS;
        return host.desk.Delete(window_id) ? PRO_TK_NO_ERROR : PRO_TK_BAD_CONTEXT;
    });
}

ProError ProWindowCurrentClose() {
    static const CallSite kSite("ProWindowCurrentClose", {PRO_TK_E_DEADLOCK});
    return Traced(kSite, {}, [](Session& host) -> ProError {
        host.desk.CloseCurrentLater();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProWindowCurrentGet(int* p_window_id) {
    static const CallSite kSite("ProWindowCurrentGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(p_window_id)}, [&](Session& host) -> ProError {
        if (p_window_id == nullptr) return PRO_TK_BAD_INPUTS;
        *p_window_id = host.desk.CurrentWindow();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProWindowRefresh(int window_id) {
    static const CallSite kSite("ProWindowRefresh", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {window_id}, [&](Session& host) -> ProError {
        if (window_id != PRO_VALUE_UNUSED && !host.desk.HasWindow(window_id)) return PRO_TK_BAD_INPUTS;
        host.desk.CountRefresh();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProWindowRepaint(int window_id) {
    static const CallSite kSite("ProWindowRepaint", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {window_id}, [&](Session& host) -> ProError {
        if (window_id != PRO_VALUE_UNUSED && !host.desk.HasWindow(window_id)) return PRO_TK_BAD_INPUTS;
        host.desk.CountRepaint();
        return PRO_TK_NO_ERROR;
    });
}
