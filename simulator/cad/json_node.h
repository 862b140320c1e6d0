// JSON values that know their place, so that an error can name it, and objects of which no key goes unread.

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "simulator/cad/model_file.h"
#include "simulator/cad/model_words.h"
#include "simulator/report/utf8.h"

namespace sim {

using Json = nlohmann::ordered_json;

// The words a text may be, "a, b, c".
template <typename Words>
std::string List(const Words& words) {
    std::string list;
    for (const auto& word : words) list += (list.empty() ? "" : ", ") + std::string(word.text);
    return list;
}

// A value with the way to it, so that an error can name its place.
class Node {
public:
    Node(const Json& value, const std::string& file) : value_(value), file_(file) {}
    Node(const Json& value, const Node& parent, std::string_view key)
        : value_(value), file_(parent.file_), parent_(&parent), key_(key) {}
    Node(const Json& value, const Node& parent, std::size_t index)
        : value_(value), file_(parent.file_), parent_(&parent), index_(index) {}

    const Json& Value() const { return value_; }

    [[noreturn]] void Fail(const std::string& expected) const {
        const std::string path = Path();
        throw ModelFileError(file_ + ": " + (path.empty() ? "/" : path) + ": expected " + expected);
    }

    std::string Text() const {
        if (!value_.is_string()) Fail("a text");
        return value_.get<std::string>();
    }
    std::wstring WideText(std::size_t longest) const {
        std::wstring text = Wide(Text());
        if (text.size() > longest) Fail("at most " + std::to_string(longest) + " characters");
        return text;
    }
    bool Truth() const {
        if (!value_.is_boolean()) Fail("true or false");
        return value_.get<bool>();
    }
    double Real() const {
        if (!value_.is_number()) Fail("a number");
        return value_.get<double>();
    }
    long long Integer(long long minimum, long long maximum) const {
        const bool isHuge =
            value_.is_number_unsigned() &&
            value_.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
        const bool fits = value_.is_number_integer() && !isHuge && value_.get<long long>() >= minimum &&
                          value_.get<long long>() <= maximum;
        if (!fits) Fail("a whole number from " + std::to_string(minimum) + " to " + std::to_string(maximum));
        return value_.get<long long>();
    }
    int Int(int minimum) const { return static_cast<int>(Integer(minimum, std::numeric_limits<int>::max())); }

    template <typename Value, std::size_t size>
    Value OneOf(const std::array<Word<Value>, size>& words) const {
        const std::string text = Text();
        const auto found = std::ranges::find(words, std::string_view(text), &Word<Value>::text);
        if (found == words.end()) Fail("one of " + List(words));
        return found->value;
    }

    template <typename Visit>
    void ForEach(Visit visit) const {
        if (!value_.is_array()) Fail("a list");
        for (std::size_t i = 0; i < value_.size(); ++i) visit(Node(value_[i], *this, i));
    }

    template <std::size_t size>
    std::array<double, size> Numbers() const {
        if (!value_.is_array() || value_.size() != size)
            Fail("a list of " + std::to_string(size) + " numbers");
        std::array<double, size> numbers{};
        for (std::size_t i = 0; i < size; ++i) numbers[i] = Node(value_[i], *this, i).Real();
        return numbers;
    }

private:
    std::string Path() const {
        if (parent_ == nullptr) return {};
        return parent_->Path() + "/" + (key_.empty() ? std::to_string(index_) : std::string(key_));
    }

    const Json& value_;
    const std::string& file_;
    const Node* parent_ = nullptr;
    std::string_view key_;
    std::size_t index_ = 0;
};

// An object whose every key somebody has to ask for, by a literal: one left over at the end is an error.
class Entries {
public:
    explicit Entries(const Node& node) : node_(node) {
        if (!node.Value().is_object()) node.Fail("an object");
    }

    template <typename Read>
    bool Optional(std::string_view key, Read read) {
        asked_.push_back(key);
        const auto found = node_.Value().find(key);
        if (found == node_.Value().end()) return false;
        ++found_;
        read(Node(*found, node_, key));
        return true;
    }
    template <typename Read>
    void Required(std::string_view key, Read read) {
        if (!Optional(key, read)) node_.Fail("the key \"" + std::string(key) + "\"");
    }
    // Fails at a key that nobody has asked for.
    void Close() const {
        if (found_ == node_.Value().size()) return;
        for (const auto& [key, value] : node_.Value().items())
            if (std::ranges::find(asked_, std::string_view(key)) == asked_.end())
                node_.Fail("no key \"" + key + "\" here");
    }

private:
    const Node& node_;
    std::vector<std::string_view> asked_;
    std::size_t found_ = 0;
};

}  // namespace sim
