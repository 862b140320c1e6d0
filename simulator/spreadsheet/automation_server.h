// The stand-in for the spreadsheet application: what its automation objects share, and what is known about
// the calls made to them.
//
// The objects understand the members that exporting a table needs, by dispatch identifier, and answer every
// other one as unknown. The same server runs inside the host's process, for tests, and in a program of its
// own.

#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <windows.h>

#include <oaidl.h>

namespace sim {

// Class of the stand-in; the original's has another.
inline constexpr CLSID kSpreadsheetClass = {
    0x7B1D5A52, 0x3C0E, 0x4E0B, {0x9C, 0x41, 0x5B, 0x2E, 0x86, 0x1F, 0x70, 0xD3}};
inline constexpr wchar_t kSpreadsheetName[] = L"Excel.Application";

// What the application itself answers when it refuses something (as an exception with this code).
inline constexpr HRESULT kApplicationError = static_cast<HRESULT>(0x800A03EC);

// Calls that go wrong, counted over all members from the last Reset.
struct AutomationFault {
    long long first = 1;
    long long count = 1;  // 0: all from `first` on
    HRESULT status = kApplicationError;
};

// A workbook that was opened, and how.
struct OpenedBook {
    std::wstring path;
    bool updatesLinks;
    bool readOnly;
    bool runsMacros;
};

// A workbook that was saved under a name, with the number of its file format.
struct SavedBook {
    std::wstring path;
    int format;
};

class AutomationServer {
public:
    std::vector<OpenedBook> opened;
    std::vector<SavedBook> saved;

    // ---- Arranging
    void Fail(const AutomationFault& fault) { faults_.push_back(fault); }
    // From the n-th call on the application is gone.
    void DisconnectAt(long long nth) { Fail({nth, 0, RPC_E_DISCONNECTED}); }
    void RefuseCreation(HRESULT status) { creationFailure_ = status; }
    // Cells do not take this text, however it is put.
    void RefuseText(std::wstring text) { refusedText_ = std::move(text); }
    // Forgets faults, counts and problems; open objects stay.
    void Reset();

    // ---- Seeing
    long long Calls() const { return calls_; }
    // Calls of one member, such as "Range.Value2".
    long long Calls(const std::string& member) const;
    const std::map<std::string, long long>& CallsByMember() const { return callsByMember_; }
    // One line for each object that a client still holds.
    std::vector<std::string> OpenObjects() const;
    int RunningApplications() const { return applications_; }
    // Questions that the application put to a user who cannot see it, and applications that were let go
    // without being told to quit. Taken problems do not come again.
    std::vector<std::string> TakeProblems();

    // ---- For the objects
    // Counts a call. S_OK, or how it fails.
    HRESULT EnterCall(const std::string& member);
    // Enters an object into the books under the number that is given back.
    long long Opened(const std::string& note);
    void Closed(long long number);
    void Problem(const std::string& text) { problems_.push_back(text); }
    void ApplicationStarted() { ++applications_; }
    void ApplicationEnded(bool toldToQuit);
    bool Refuses(const std::wstring& text) const { return !text.empty() && text == refusedText_; }
    HRESULT CreationFailure() const { return creationFailure_; }

    // Runs when the last object is gone.
    std::function<void()> onIdle;

private:
    std::vector<AutomationFault> faults_;
    HRESULT creationFailure_ = S_OK;
    std::wstring refusedText_;
    bool disconnected_ = false;
    long long calls_ = 0;
    std::map<std::string, long long> callsByMember_;
    std::map<long long, std::string> open_;
    long long lastOpened_ = 0;
    int applications_ = 0;
    std::vector<std::string> problems_;
};

// Starts an application and hands out its object, with one reference. An arranged refusal is answered as
// it is.
HRESULT CreateApplication(const std::shared_ptr<AutomationServer>& server, REFIID id, void** object);

}  // namespace sim
