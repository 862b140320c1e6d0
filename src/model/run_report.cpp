// Reports of runs.

#include "model/run_report.h"

#include <array>
#include <cwchar>

#include <ProUtil.h>

#include <windows.h>

#include "base/csv.h"
#include "base/host_callback.h"
#include "base/host_version.h"
#include "base/local_time.h"
#include "base/status.h"
#include "base/text.h"
#include "model/run_reasons.h"

namespace kv {

static constexpr std::size_t kDurationWidth = 12;

using HeadRow = std::array<std::wstring, 2>;
using EntryRow = std::array<std::wstring, 6>;

static std::wstring WorkingDirectoryText();
static const wchar_t* ResultText(const RunEntry& entry);

RunReport::RunReport(const char* command) : start_(GetTickCount64()) {
    ProError status = file_.Create(kReportFolder, command);
    const auto head = [&](const wchar_t* title, const std::wstring& text) {
        if (!Failed(status)) status = file_.RowWrite(HeadRow{title, HarmlessCell(text)});
    };
    head(L"命令", WideName(command));
    head(L"主程序版本", HostVersion());
    head(L"工作目录", WorkingDirectoryText());
    head(L"开始时间", LocalTimeText());
    if (!Failed(status)) status = file_.RowReserve(std::array{std::wstring(L"用时（秒）")}, kDurationWidth);
    if (!Failed(status)) (void)file_.RowWrite(EntryRow{L"模型", L"步骤", L"结果", L"原因", L"文件", L"替换"});
}

// Being short of memory at the end of a run costs no more than this line.
RunReport::~RunReport() {
    (void)Guarded([this] {
        std::array<wchar_t, kDurationWidth + 1> text = {};
        const unsigned long long taken = GetTickCount64() - start_;
        std::swprintf(text.data(), text.size(), L"%llu.%03llu", taken / 1000, taken % 1000);
        return file_.ReservedWrite(text.data());
    });
}

void RunReport::Add(const RunEntry& entry) {
    (void)file_.RowWrite(EntryRow{HarmlessCell(entry.model), entry.step, ResultText(entry),
                                  Failed(entry.status) ? ReasonText(entry) : entry.note,
                                  HarmlessCell(entry.file), entry.replaced ? L"是" : L""});
}

static std::wstring WorkingDirectoryText() {
    ProPath directory = {};
    return Failed(ProDirectoryCurrentGet(directory)) ? std::wstring() : std::wstring(directory);
}

static const wchar_t* ResultText(const RunEntry& entry) {
    switch (OutcomeOf(entry)) {
        case RunOutcome::Done:
            return L"完成";
        case RunOutcome::Skipped:
            return L"跳过";
        case RunOutcome::NotReached:
            return L"未处理";
        case RunOutcome::Failed:
            break;
    }
    return L"失败";
}

}  // namespace kv
