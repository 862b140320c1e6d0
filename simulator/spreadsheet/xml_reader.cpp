#include "simulator/spreadsheet/xml_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "simulator/report/utf8.h"

namespace sim {

namespace {

std::string CharacterOf(std::string_view code) {
    const bool hexadecimal = code.starts_with("#x");
    code.remove_prefix(hexadecimal ? 2 : 1);
    unsigned number = 0;
    std::from_chars(code.data(), code.data() + code.size(), number, hexadecimal ? 16 : 10);
    std::wstring text;
    if (number >= 0x10000) {
        text += static_cast<wchar_t>(0xD800 + ((number - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((number - 0x10000) & 0x3FFU));
    } else {
        text += static_cast<wchar_t>(number);
    }
    return Utf8(text);
}

std::string EntityText(std::string_view entity) {
    constexpr std::array<std::pair<std::string_view, const char*>, 5> kEntities = {
        {{"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}}};
    if (entity.starts_with('#')) return CharacterOf(entity);
    for (const auto& [name, text] : kEntities)
        if (name == entity) return text;
    return {};
}

std::string Plain(std::string_view xml) {
    std::string text;
    while (!xml.empty()) {
        const std::size_t mark = xml.find('&');
        const std::size_t end = mark == std::string_view::npos ? mark : xml.find(';', mark);
        text += xml.substr(0, mark);
        if (end == std::string_view::npos) break;
        text += EntityText(xml.substr(mark + 1, end - mark - 1));
        xml.remove_prefix(end + 1);
    }
    return text;
}

std::string LocalName(std::string_view name) {
    const std::size_t colon = name.find(':');
    return std::string(colon == std::string_view::npos ? name : name.substr(colon + 1));
}

}  // namespace

XmlReader::Kind XmlReader::Next() {
    if (std::exchange(closePending_, false)) return Kind::kClose;
    if (rest_.empty()) return Kind::kEnd;
    if (rest_.front() == '<') return ReadTag();
    const std::size_t end = std::min(rest_.find('<'), rest_.size());
    text_ = Plain(rest_.substr(0, end));
    rest_.remove_prefix(end);
    return Kind::kText;
}

XmlReader::Kind XmlReader::ReadTag() {
    const std::size_t end = rest_.find('>');
    if (end == std::string_view::npos) {
        rest_ = {};
        return Kind::kEnd;
    }
    std::string_view tag = rest_.substr(1, end - 1);
    rest_.remove_prefix(end + 1);
    if (tag.starts_with('?') || tag.starts_with('!')) return Next();
    if (tag.starts_with('/')) {
        name_ = LocalName(tag.substr(1));
        return Kind::kClose;
    }
    closePending_ = tag.ends_with('/');
    if (closePending_) tag.remove_suffix(1);
    const std::size_t nameEnd = std::min(tag.find_first_of(" \t\r\n"), tag.size());
    name_ = LocalName(tag.substr(0, nameEnd));
    ReadAttributes(tag.substr(nameEnd));
    return Kind::kOpen;
}

void XmlReader::ReadAttributes(std::string_view tag) {
    attributes_.clear();
    for (;;) {
        tag.remove_prefix(std::min(tag.find_first_not_of(" \t\r\n"), tag.size()));
        const std::size_t equals = tag.find('=');
        if (equals == std::string_view::npos || equals + 1 >= tag.size()) return;
        const std::size_t end = tag.find(tag[equals + 1], equals + 2);
        if (end == std::string_view::npos) return;
        attributes_[LocalName(tag.substr(0, equals))] = Plain(tag.substr(equals + 2, end - equals - 2));
        tag.remove_prefix(end + 1);
    }
}

const std::string& XmlReader::Attribute(const std::string& name) const {
    static const std::string kNone;
    const auto found = attributes_.find(name);
    return found == attributes_.end() ? kNone : found->second;
}

int XmlReader::Number(const std::string& name, int otherwise) const {
    return static_cast<int>(Real(name, otherwise));
}

double XmlReader::Real(const std::string& name, double otherwise) const {
    const std::string& text = Attribute(name);
    double number = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace sim
