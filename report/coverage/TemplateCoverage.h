#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "report/coverage/PartListener.h"

namespace tessalink {

/// A part of a template, and in how many reports it ran.
struct CoveredPart {
    PartKind kind = PartKind::Then;  ///< what the part is
    std::uint64_t start = 0;         ///< in bytes
    std::uint64_t end = 0;           ///< in bytes; behind the part
    std::size_t reports = 0;         ///< in how many reports it ran
};

/// A template, or an include, with its parts in the order of their starts, outer before inner ones.
struct CoveredTemplate {
    CString name;                    ///< the path that was given for it
    std::string text;                ///< plain
    std::vector<CoveredPart> parts;  ///< in the order of their starts
};

/// Which parts of templates run in reports: a listener for the parsers of many runs, one after the
/// other. Templates are told apart by the paths that they were given.
class TESSALINK_API TemplateCoverage : public PartListener {
public:
    /// Reads a template, and finds its parts without running it; the file is rewound. One that is
    /// known already is left out. The first fault of a template is a ParseException; the parts
    /// before it are kept. File faults pass through.
    void AddTemplate(CFile& file, int scrambled);
    /// Whether the template with this path was added.
    bool Has(const CString& name) const { return m_numbers.contains(name); }

    /// Begins the next report: what runs in it counts once, however often it runs.
    void BeginReport();

    /// How many reports were begun.
    std::size_t ReportCount() const { return m_reports; }
    /// How many parts all templates have.
    std::size_t PartCount() const;
    /// Parts that ran in at least one report.
    std::size_t RunCount() const;
    /// In percent; 100 where there are no parts.
    double Percent() const;
    /// In the order in which they were added.
    const std::deque<CoveredTemplate>& Templates() const { return m_templates; }

    // For parsers. Parts of templates that were not added are passed over.
    void PartBegins(PartKind kind, const TemplateSpot& start, bool isRun) override;
    void PartEnds(const TemplateSpot& /*end*/) override {}

private:
    std::deque<CoveredTemplate> m_templates;
    std::map<CString, std::size_t> m_numbers;
    std::set<const CoveredPart*> m_ranNow;  ///< in the report that is being made
    std::size_t m_reports = 0;
};

/// The share of parts that ran, in percent; 100 where there are none.
TESSALINK_API double percentOf(std::size_t run, std::size_t parts);
/// How many of them ran.
TESSALINK_API std::size_t runCount(const std::vector<CoveredPart>& parts);

}  // namespace tessalink
