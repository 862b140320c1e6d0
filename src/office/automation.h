// Late-bound automation: owners for what COM hands out, and calls by dispatch identifier.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include <windows.h>

#include <oaidl.h>

namespace kv {

// Keeps COM usable on this thread while it lives, whichever way the thread was initialised before.
class ComApartment {
public:
    ComApartment();
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
    ~ComApartment();
    // S_FALSE where COM had been initialised already.
    HRESULT Status() const { return status_; }

private:
    HRESULT status_;
    bool mustLeave_;
};

// Owns a VARIANT and the text or array in it. Making one of a text throws std::bad_alloc when memory is
// short.
class Variant {
public:
    Variant();
    explicit Variant(bool value);
    explicit Variant(long value);
    explicit Variant(const std::wstring& text);
    // A pointer would otherwise pass for a truth value.
    explicit Variant(const wchar_t* text) : Variant(std::wstring(text)) {}
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    Variant(Variant&& other) noexcept;
    ~Variant();

    // An argument that the caller leaves out.
    static Variant Omitted();
    // A block of empty texts, rows by columns; SetText fills it. Throws std::bad_alloc.
    static Variant Block(std::size_t rows, std::size_t columns);
    // One cell of a block, counted from 0.
    void SetText(std::size_t row, std::size_t column, std::wstring_view text);

    const VARIANT& Get() const { return value_; }
    VARIANT* Receive() { return &value_; }

private:
    VARIANT value_;
};

// Owns a reference to an automation object. All calls answer E_POINTER while it holds none.
class Dispatch {
public:
    Dispatch() = default;
    Dispatch(const Dispatch&) = delete;
    Dispatch& operator=(const Dispatch&) = delete;
    ~Dispatch() { Release(); }

    // Starts the server of that name in a process of its own. CO_E_CLASSSTRING: no such name is registered.
    [[nodiscard]] HRESULT Create(const wchar_t* programName);
    bool IsHeld() const { return object_ != nullptr; }
    void Release();

    // Reads a property, or calls a method, whose result is an object. DISP_E_TYPEMISMATCH for any other
    // result.
    [[nodiscard]] HRESULT Get(DISPID property, Dispatch& result,
                              std::span<const Variant> arguments = {}) const;
    [[nodiscard]] HRESULT CallFor(DISPID method, Dispatch& result,
                                  std::span<const Variant> arguments = {}) const;
    // Reads a property whose result is a value, in whichever form the application has it.
    [[nodiscard]] HRESULT GetValue(DISPID property, Variant& value) const;
    [[nodiscard]] HRESULT Put(DISPID property, const Variant& value) const;
    // The same for a property whose identifier is not published: it is asked for by its name.
    [[nodiscard]] HRESULT PutNamed(const wchar_t* property, const Variant& value) const;
    [[nodiscard]] HRESULT Call(DISPID method, std::span<const Variant> arguments = {}) const;

private:
    HRESULT Invoke(DISPID member, WORD kind, std::span<const Variant> arguments, VARIANT* result) const;
    HRESULT Fetch(DISPID member, WORD kind, Dispatch& result, std::span<const Variant> arguments) const;

    IDispatch* object_ = nullptr;
};

}  // namespace kv
