// XML read tag by tag, as far as workbook files need it: namespace prefixes are dropped, no document types.

#pragma once

#include <map>
#include <string>
#include <string_view>

namespace sim {

class XmlReader {
public:
    enum class Kind { kOpen, kClose, kText, kEnd };

    explicit XmlReader(std::string_view xml) : rest_(xml) {}

    // Goes on to the next piece. An element without content is an opening and a closing tag.
    Kind Next();
    const std::string& Name() const { return name_; }
    // Attribute of the opening tag; empty: it has none of that name.
    const std::string& Attribute(const std::string& name) const;
    int Number(const std::string& name, int otherwise) const;
    double Real(const std::string& name, double otherwise) const;
    const std::string& Text() const { return text_; }

private:
    Kind ReadTag();
    void ReadAttributes(std::string_view tag);

    std::string_view rest_;
    std::string name_;
    std::string text_;
    std::map<std::string, std::string> attributes_;
    bool closePending_ = false;
};

}  // namespace sim
