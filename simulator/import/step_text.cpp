#include "simulator/import/step_text.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "simulator/report/utf8.h"

namespace sim {

namespace {

// ISO 8859-1; the further parts follow by number.
constexpr unsigned kLatin1Page = 28591;

// A number in exactly `digits` hexadecimal digits.
std::optional<unsigned> Hexadecimal(std::string_view text, std::size_t digits) {
    unsigned number = 0;
    if (text.size() < digits) return std::nullopt;
    const auto [end, error] = std::from_chars(text.data(), text.data() + digits, number, 16);
    if (error != std::errc() || end != text.data() + digits) return std::nullopt;
    return number;
}

void AppendCharacter(std::wstring& text, unsigned code) {
    if (code < 0x10000) {
        text += static_cast<wchar_t>(code);
    } else if (code < 0x110000) {
        text += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + (code & 0x3FF));
    } else {
        text += L'\xFFFD';
    }
}

class TextDecoder {
public:
    TextDecoder(std::string_view raw, RawBytes bytes) : rest_(raw), bytes_(bytes) {}

    std::wstring Decode() {
        while (!rest_.empty()) {
            if (rest_.front() == '\\' && Escape()) continue;
            if (rest_.starts_with("''")) rest_.remove_prefix(1);
            // The second byte of a Chinese character may look like a stroke.
            const auto first = static_cast<unsigned char>(rest_.front());
            const bool isPair = bytes_ == RawBytes::kGbk && first > 0x80 && rest_.size() > 1;
            plain_ += rest_.substr(0, isPair ? 2 : 1);
            rest_.remove_prefix(isPair ? 2 : 1);
        }
        Flush();
        return std::move(text_);
    }

private:
    // False: what begins here is no escape.
    bool Escape() {
        if (rest_.starts_with("\\\\")) {
            plain_ += '\\';
            rest_.remove_prefix(2);
            return true;
        }
        if (rest_.starts_with("\\X2\\")) return Characters(4);
        if (rest_.starts_with("\\X4\\")) return Characters(8);
        if (rest_.starts_with("\\X\\")) {
            const std::optional<unsigned> code = Hexadecimal(rest_.substr(3), 2);
            return code && Add(*code, 5);
        }
        if (rest_.starts_with("\\S\\") && rest_.size() > 3) {
            const char shifted = static_cast<char>(static_cast<unsigned char>(rest_[3]) | 0x80);
            Flush();
            text_ += FromCodePage(std::string_view(&shifted, 1), page_).value_or(L"\xFFFD");
            rest_.remove_prefix(4);
            return true;
        }
        const bool isPage =
            rest_.size() > 3 && rest_[1] == 'P' && rest_[2] >= 'A' && rest_[2] <= 'I' && rest_[3] == '\\';
        if (!isPage) return false;
        page_ = kLatin1Page + static_cast<unsigned>(rest_[2] - 'A');
        rest_.remove_prefix(4);
        return true;
    }

    bool Add(unsigned code, std::size_t length) {
        Flush();
        AppendCharacter(text_, code);
        rest_.remove_prefix(length);
        return true;
    }

    // Codes of `digits` digits each up to \X0\.
    bool Characters(std::size_t digits) {
        std::string_view codes = rest_.substr(4);
        std::wstring found;
        while (!codes.starts_with("\\X0\\")) {
            const std::optional<unsigned> code = Hexadecimal(codes, digits);
            if (!code) return false;
            AppendCharacter(found, *code);
            codes.remove_prefix(digits);
        }
        Flush();
        text_ += found;
        rest_ = codes.substr(4);
        return true;
    }

    void Flush() {
        const unsigned page = bytes_ == RawBytes::kGbk ? kGbkPage : kLatin1Page;
        text_ += bytes_ == RawBytes::kUtf8 ? Wide(plain_) : FromCodePage(plain_, page).value_or(Wide(plain_));
        plain_.clear();
    }

    std::string_view rest_;
    RawBytes bytes_;
    unsigned page_ = kLatin1Page;  // of \S\.
    std::string plain_;
    std::wstring text_;
};

}  // namespace

RawBytes RawBytesOf(const std::vector<std::string_view>& texts) {
    if (std::ranges::all_of(texts, [](std::string_view text) { return IsUtf8(text); }))
        return RawBytes::kUtf8;
    const bool isGbk = std::ranges::all_of(
        texts, [](std::string_view text) { return FromCodePage(text, kGbkPage).has_value(); });
    return isGbk ? RawBytes::kGbk : RawBytes::kLatin1;
}

std::wstring StepText(std::string_view raw, RawBytes bytes) {
    return TextDecoder(raw, bytes).Decode();
}

}  // namespace sim
