// Owners of what the host hands out.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include <ProArray.h>
#include <ProGeomitemdata.h>
#include <ProSelection.h>
#include <ProUtil.h>
#include <ProWstring.h>

#include "base/status.h"

namespace kv {

// Owns one toolkit handle and gives it back with the toolkit's own function.
template <typename Handle, auto Free>
class HostHandle {
public:
    HostHandle() = default;
    HostHandle(const HostHandle&) = delete;
    HostHandle& operator=(const HostHandle&) = delete;
    ~HostHandle() { Reset(); }
    Handle Get() const { return handle_; }
    // For a toolkit call that hands a handle out, whose status goes through Received. What was held before is
    // given back.
    Handle* Receive() {
        Reset();
        return &handle_;
    }
    // The status as it is. A call that failed has handed nothing out, whatever it left here.
    [[nodiscard]] ProError Received(ProError status) {
        if (Failed(status)) handle_ = nullptr;
        return status;
    }
    // For a toolkit call that works on what is held and may move it.
    Handle* InOut() { return &handle_; }
    // Owns `handle` from now on. What was held before is given back.
    void Reset(Handle handle = nullptr) {
        if (handle_ != nullptr) Free(&handle_);
        handle_ = handle;
    }
    // Holds nothing any more: the caller owns what was held.
    [[nodiscard]] Handle Release() { return std::exchange(handle_, nullptr); }

private:
    Handle handle_ = nullptr;
};

template <typename T>
void ArrayFree(T** items) {
    ProArray array = *items;
    ProArrayFree(&array);
}

inline void SelectionsFree(ProSelection** selections) {
    ProSelectionarrayFree(*selections);
}

inline void WideTextsFree(wchar_t*** texts) {
    ProWstringproarrayFree(*texts);
}

inline void WideTextFree(wchar_t** text) {
    ProWstringFree(*text);
}

template <typename T>
using HostArray = HostHandle<T*, ArrayFree<T>>;
using HostString = HostHandle<wchar_t*, WideTextFree>;
using HostTexts = HostHandle<wchar_t**, WideTextsFree>;
using SelectionHandle = HostHandle<ProSelection, ProSelectionFree>;
using SelectionArray = HostHandle<ProSelection*, SelectionsFree>;
using GeometryData = HostHandle<ProGeomitemdata*, ProGeomitemdataFree>;

// An array of `count` elements that grows as more are added. Errors: those of ProArrayAlloc.
template <typename T, auto Free>
[[nodiscard]] ProError ArrayAlloc(HostHandle<T*, Free>& array, int count = 0) {
    ProArray memory = nullptr;
    // The elements may be handles, which are pointers.
    const ProError status =
        ProArrayAlloc(count, sizeof(T), 1, &memory);  // NOLINT(bugprone-sizeof-expression)
    if (!Failed(status)) array.Reset(static_cast<T*>(memory));
    return status;
}

// Adds copies of `items` at the end, all in one call: growing an array element by element costs the
// square of its size. Errors: those of ProArrayObjectAdd.
template <typename T>
[[nodiscard]] ProError ArrayAppend(HostArray<T>& array, std::span<T> items) {
    if (items.empty()) return PRO_TK_NO_ERROR;
    ProArray memory = array.Release();
    const ProError status = ProArrayObjectAdd(&memory, -1, static_cast<int>(items.size()), items.data());
    array.Reset(static_cast<T*>(memory));
    return status;
}

// The elements of a host array; none when it holds nothing or was never handed out.
template <typename T, auto Free>
std::span<T> Items(const HostHandle<T*, Free>& array) {
    int count = 0;
    if (array.Get() == nullptr || Failed(ProArraySizeGet(array.Get(), &count)) || count < 0) return {};
    return {array.Get(), static_cast<std::size_t>(count)};
}

// The same where no elements would mean something: an array that cannot be counted is a failure. Errors:
// those of ProArraySizeGet.
template <typename T, auto Free>
[[nodiscard]] ProError ItemsGet(const HostHandle<T*, Free>& array, std::span<T>& items) {
    int count = 0;
    const ProError status = array.Get() == nullptr ? PRO_TK_NO_ERROR : ProArraySizeGet(array.Get(), &count);
    items = {array.Get(), static_cast<std::size_t>(Failed(status) ? 0 : count)};
    return status;
}

// The text of a host string; empty when none was handed out.
inline std::wstring TextOf(const HostString& text) {
    return text.Get() == nullptr ? std::wstring() : std::wstring(text.Get());
}

// Owns a plain list of strings, whose count the host gives with it.
template <typename Char, auto Free>
class HostList {
public:
    HostList() = default;
    HostList(const HostList&) = delete;
    HostList& operator=(const HostList&) = delete;
    ~HostList() { Reset(); }
    // Both for the same toolkit call, in either order, whose status goes through Received. What was held
    // before is given back.
    int* ReceiveCount() {
        Reset();
        return &count_;
    }
    Char*** ReceiveNames() {
        Reset();
        return &strings_;
    }
    // The status as it is. A call that failed has handed nothing out, whatever it left here.
    [[nodiscard]] ProError Received(ProError status) {
        if (Failed(status)) strings_ = nullptr;
        return status;
    }
    std::span<Char*> All() const {
        if (strings_ == nullptr || count_ < 0) return {};
        return {strings_, static_cast<std::size_t>(count_)};
    }
    // The string at a place; empty where the list has none.
    std::basic_string<Char> At(std::size_t place) const {
        const std::span<Char*> all = All();
        const bool none = place >= all.size() || all[place] == nullptr;
        return none ? std::basic_string<Char>() : std::basic_string<Char>(all[place]);
    }
    std::basic_string<Char> First() const { return At(0); }

private:
    void Reset() {
        if (strings_ != nullptr) Free(strings_, count_);
        strings_ = nullptr;
        count_ = 0;
    }

    int count_ = 0;
    Char** strings_ = nullptr;
};

// Names, such as the selected names of a dialog component; labels.
using HostNames = HostList<char, ProStringarrayFree>;
using HostLabels = HostList<wchar_t, ProWstringarrayFree>;

}  // namespace kv
