#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/report/tidy/PartedTemplates.h"

namespace tessalink::test {

/// Documents of a word processor with the same commands: as an author types them, or with every
/// letter of every command in a format of its own.
class SplitDocuments {
public:
    explicit SplitDocuments(bool isSplit) : m_isSplit(isSplit) {}

    /// An OpenDocument text in one file, with revision marks, a table, a header and a footer, a
    /// list, a field and a footnote.
    std::string Odt() const {
        std::string text =
            "<?xml version='1.0' encoding='UTF-8'?><office:document "
            "xmlns:office='urn:oasis:names:tc:opendocument:xmlns:office:1.0' "
            "xmlns:text='urn:oasis:names:tc:opendocument:xmlns:text:1.0' "
            "xmlns:style='urn:oasis:names:tc:opendocument:xmlns:style:1.0' "
            "xmlns:table='urn:oasis:names:tc:opendocument:xmlns:table:1.0' "
            "xmlns:dc='http://purl.org/dc/elements/1.1/' "
            "xmlns:fo='urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0' "
            "office:version='1.3' office:mimetype='application/vnd.oasis.opendocument.text'>"
            "<office:automatic-styles>" +
            Style("S0", "fo:font-weight='bold'") + Style("S1", "fo:font-style='italic'") +
            Style("S2", "fo:color='#ff0000'") +
            "<style:page-layout style:name='P'/></office:automatic-styles>"
            "<office:master-styles><style:master-page style:name='Standard' "
            "style:page-layout-name='P'><style:header>" +
            OdtPara("Report on @Name") + "</style:header><style:footer>" + OdtPara("@Age years") +
            "</style:footer></style:master-page></office:master-styles>"
            "<office:body><office:text><text:tracked-changes>" +
            Change("c1", "<text:deletion>", "<text:p>gone</text:p></text:deletion>") +
            Change("c2", "<text:insertion>", "</text:insertion>") + "</text:tracked-changes>" +
            OdtBody() + "</office:text></office:body></office:document>";
        std::replace(text.begin(), text.end(), '\'', '"');
        return text;
    }

    std::string Html() const {
        std::string text = "<html><body><table border=1><tr><td>" + Spans(cTexts[0], cHtml) +
                           "</td><td>" + Spans(cTexts[1], cHtml) + "</td></tr></table><ul><li>" +
                           Spans(cTexts[2], cHtml) + "</li></ul>";
        for (const std::string_view one : cTexts) text += "<p>" + Spans(one, cHtml) + "</p>";
        return text + "</body></html>";
    }

private:
    struct Format {
        std::string before;
        std::string after;
    };
    using Formats = std::vector<Format>;

    static inline const Formats cHtml = {{"<b>", "</b>"}, {"<i>", "</i>"}, {"<u>", "</u>"}};
    static inline const Formats cOdt = {{"<text:span text:style-name='S0'>", "</text:span>"},
                                        {"<text:span text:style-name='S1'>", "</text:span>"},
                                        {"<text:span text:style-name='S2'>", "</text:span>"}};
    static inline const std::vector<std::string_view> cTexts = {
        "Dear @Name, you are @Age.",
        "A score of @COMPUTE(Score*2+1:0:1) is @IF(Score>60 & Age<40)@THEN high@ELSE low@ENDIF "
        "here.",
        "@Name@@example.org has @TEXT(Age/10), @CAP([the test]) and @COMMA_LIST([a],Name,[c];[or])",
        "@DEFINE(n,t)@LET(n=Age-30;t=[in brackets])@n, @t@COMMENT not shown @COMMENT_END",
        "@DEFER_START(2)second, @DEFER_END@DEFER_START(1)first, @DEFER_END@PRINT_DEFERRED(ASC)end",
        "@ID(Full report, 2.1)@IF(0)@THEN none@ENDIF@EVAL([@TEXT(3)]) @LINK ends@CALL(f)"};

    static std::string Style(const std::string& name, const std::string& properties) {
        return "<style:style style:name='" + name +
               "' style:family='text'><style:text-properties " + properties + "/></style:style>";
    }
    static std::string Change(const std::string& id, const std::string& start,
                              const std::string& end) {
        return "<text:changed-region text:id='" + id + "'>" + start +
               "<office:change-info><dc:creator>A</dc:creator><dc:date>2020-01-01T00:00:00</"
               "dc:date>"
               "</office:change-info>" +
               end + "</text:changed-region>";
    }

    static std::string Escaped(std::string_view text) {
        std::string escaped;
        for (const char ch : text) {
            escaped += ch == '<'   ? "&lt;"
                       : ch == '>' ? "&gt;"
                       : ch == '&' ? "&amp;"
                                   : std::string(1, ch);
        }
        return escaped;
    }

    /// The text, each part between two seams in another format.
    std::string Spans(std::string_view text, const Formats& formats) const {
        if (!m_isSplit) return Escaped(text);
        std::string spans;
        std::size_t from = 0;
        const std::vector<std::size_t> seams = SeamFinder(text).seams;
        for (std::size_t i = 0; i < seams.size(); ++i) {
            const std::size_t seam = seams[i];
            spans += Escaped(text.substr(from, seam - from));
            const Format& format = formats[i % formats.size()];
            const std::size_t next = i + 1 < seams.size() ? seams[i + 1] : seam + 1;
            from = text[seam] == '[' ? next : seam + 1;
            spans += format.before + Escaped(text.substr(seam, from - seam)) + format.after;
        }
        return spans + Escaped(text.substr(from));
    }

    std::string OdtPara(std::string_view text) const {
        return "<text:p>" + Spans(text, cOdt) + "</text:p>";
    }

    std::string OdtBody() const {
        std::string body =
            "<text:p>@Na" +
            std::string(m_isSplit ? "<text:change-start "
                                    "text:change-id='c2'/>m<text:change-end text:change-id='c2'/>"
                                  : "m") +
            "e<text:change text:change-id='c1'/> on page <text:page-number "
            "text:select-page='current'>1</text:page-number><text:note text:id='f' "
            "text:note-class='footnote'><text:note-citation>1</text:note-citation>"
            "<text:note-body>" +
            OdtPara("Of @Name") +
            "</text:note-body></text:note></text:p>"
            "<table:table><table:table-column table:number-columns-repeated='2'/>"
            "<table:table-row><table:table-cell>" +
            OdtPara(cTexts[0]) + "</table:table-cell><table:table-cell>" + OdtPara(cTexts[1]) +
            "</table:table-cell></table:table-row></table:table>"
            "<text:list><text:list-item>" +
            OdtPara(cTexts[2]) + "</text:list-item></text:list>";
        for (const std::string_view one : cTexts) body += OdtPara(one);
        return body;
    }

    bool m_isSplit;
};

}  // namespace tessalink::test
