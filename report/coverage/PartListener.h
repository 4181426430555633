#pragma once

#include "report/FileParser.h"

namespace tessalink {

/// Parts of a template that one report has and another one has not.
enum class PartKind {
    Then,     ///< what stands between @THEN and @ELSE or @ENDIF
    Else,     ///< what stands between @ELSE and @ENDIF
    Block,    ///< a block of deferred output
    Include,  ///< an @INCLUDE
};

/// Is told of the parts of templates in the order in which a parser reads them. Parts within
/// another begin and end between its beginning and its end; after a fault those that were open
/// don't end. The texts of EVALs have no parts.
class PartListener {
public:
    virtual ~PartListener() = default;

    /// `isRun`: it is carried out, and not only read. Of a branch that is not run the parts within
    /// may not be told.
    virtual void PartBegins(PartKind kind, const TemplateSpot& start, bool isRun) = 0;
    /// The part that began last, of those that are open, ends before this place.
    virtual void PartEnds(const TemplateSpot& end) = 0;
};

}  // namespace tessalink
