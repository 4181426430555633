#pragma once

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tessalink::test {

/// Reads an XML text of elements, attributes and characters, as far as pictures need it.
class XmlCheck {
public:
    /// What is wrong with the text; empty when it is well-formed and every url(#id) refers to an id
    /// before it.
    static std::string Fault(std::string_view xml) {
        XmlCheck check(xml);
        const bool sound = check.Document();
        return sound ? "" : "at \"" + std::string(check.m_rest.substr(0, 60)) + '"';
    }

private:
    explicit XmlCheck(std::string_view xml) : m_rest(xml) {}

    bool Document() {
        if (!Take("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") || !Take("<")) return false;
        if (!StartTag()) return false;
        while (!m_open.empty()) {
            const bool sound = Take("</") ? EndTag() : Take("<") ? StartTag() : Character();
            if (!sound) return false;
        }
        return m_rest == "\n";
    }
    bool Take(std::string_view token) {
        if (!m_rest.starts_with(token)) return false;
        m_rest.remove_prefix(token.size());
        return true;
    }
    std::string_view Name() {
        const auto isIn = [](char ch) {
            return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || ch == ':' || ch == '-' ||
                   (ch >= '0' && ch <= '9');
        };
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), isIn);
        const std::string_view name =
            m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
        m_rest.remove_prefix(name.size());
        return name;
    }
    // One character of text or of an attribute.
    bool Character() {
        constexpr std::array<std::string_view, 4> entities = {"&lt;", "&gt;", "&amp;", "&quot;"};
        if (std::any_of(entities.begin(), entities.end(), [this](auto e) { return Take(e); })) {
            return true;
        }
        if (m_rest.empty()) return false;
        const auto lead = static_cast<unsigned char>(m_rest.front());
        const std::size_t length = lead < 0x80   ? 1
                                   : lead < 0xC2 ? 0
                                   : lead < 0xE0 ? 2
                                   : lead < 0xF0 ? 3
                                                 : 0;
        const bool allowed =
            lead == '\n' || (lead >= ' ' && lead != '<' && lead != '&' && lead != 0x7F);
        if (length == 0 || !allowed || m_rest.size() < length) return false;
        const std::string_view more = m_rest.substr(1, length - 1);
        m_rest.remove_prefix(length);
        return std::all_of(more.begin(), more.end(), [](char ch) { return (ch & 0xC0) == 0x80; });
    }
    bool Attribute() {
        const std::string_view name = Name();
        if (name.empty() || !m_names.insert(name).second || !Take("=\"")) return false;
        const std::string_view start = m_rest;
        while (!m_rest.empty() && m_rest.front() != '"') {
            if (!Character()) return false;
        }
        const std::string_view value = start.substr(0, start.size() - m_rest.size());
        if (name == "id" && !m_ids.insert(value).second) return false;
        constexpr std::string_view reference = "url(#";
        if (value.starts_with(reference)) {
            const auto id = value.substr(reference.size(), value.size() - reference.size() - 1);
            if (m_ids.count(id) == 0) return false;
        }
        return Take("\"");
    }
    bool StartTag() {
        const std::string_view name = Name();
        m_names.clear();
        while (Take(" ")) {
            if (!Attribute()) return false;
        }
        if (Take("/>")) return !name.empty();
        m_open.push_back(name);
        return !name.empty() && Take(">");
    }
    bool EndTag() {
        const std::string_view name = m_open.back();
        m_open.pop_back();
        return Name() == name && Take(">");
    }

    std::string_view m_rest;
    std::vector<std::string_view> m_open;
    std::set<std::string_view> m_names;
    std::set<std::string_view> m_ids;
};

}  // namespace tessalink::test
