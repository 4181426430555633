#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/report/RandomTemplates.h"

namespace tessalink::test {

/// A fault that was put into a template.
struct PlantedFault {
    std::size_t offset = 0;
    std::string message;
    std::string note;  ///< what a note says, or the start of it; empty: none is expected
    std::string word;  ///< a word that stands just before it on the page
};

enum class Where { anywhere, outsideConditions, outsideBlocks };

/// Where texts in brackets have no end, `tidy` doesn't see what formatting has parted.
inline constexpr const char* cAnyNote = "*";

/// How a fault is written: "^" stands where it is found, "$" for a number that no other has.
struct FaultKind {
    std::string_view text;
    std::string_view message;
    const char* note = "";
    Where where = Where::anywhere;
};

inline constexpr FaultKind cFaultKinds[] = {
    {"@COMPUTE(1+^)", "Unexpected token in expression!"},
    {"@COMPUTE(n ^x)", "Right parenthesis expected after COMPUTE!"},
    {"@COMPUTE((n+1^:2)", "Right parenthesis missing in expression!"},
    {"@COMPUTE(1^,5)", "Right parenthesis expected after COMPUTE!",
     "decimals stand behind a point"},
    {"@COMPUTE(1/0^)", "Division by zero in expression!", "the divisor is 0",
     Where::outsideConditions},
    {"@COMPUTE(1.5:^-3)", "Unexpected token in expression!", "a minus sign behind : or ;"},
    {"@COMPUTE(n ^{\\b x})", "Right parenthesis expected after COMPUTE!", "formatting"},
    {"@IF(n ^and n)@THEN x@ENDIF ", "Right parenthesis expected at end of condition!",
     "and is written &"},
    {"@IF(not ^n)@THEN x@ELSE y@ENDIF ", "Right parenthesis expected at end of condition!",
     "not is written ~"},
    {"@IF(n=^=1)@THEN x@ELSE y@ENDIF ", "Unexpected token in expression!", "equal is written ="},
    {"@IF(n^!=1)@THEN @IF(n)@THEN x@ELSE y@ENDIF z@ENDIF ",
     "Right parenthesis expected at end of condition!", "not equal is written <>"},
    {"@IF(n&^&n)@THEN x@ENDIF ", "Unexpected token in expression!", "and is written &"},
    {"@IF(^[f]=n)@THEN x@ENDIF ", "Unexpected token in expression!", "texts can't be compared"},
    {"@IF(n=^[f])@THEN x@ENDIF ", "Unexpected token in expression!", "texts can't be compared"},
    {"@IF(n=^\"f\")@THEN x@ENDIF ", "Unexpected token in expression!", "a text stands in brackets"},
    {"@IF(n)^@THENlower x@ENDIF ", "@THEN expected after condition!",
     "@THENlower is read as one name"},
    {"@IF(n) ^{\\b @THEN} x@ENDIF ", "@THEN expected after condition!", cAnyNote},
    {"@IF(n)@THEN x@ELSE y^@ELSE z@ENDIF ", "@ENDIF expected!", "this @IF has a second @ELSE"},
    {"@IF ^n>1@THEN x@ENDIF ", "Left parenthesis expected after @IF!", "IF is a command"},
    {"^@THEN x@ELSE y@ENDIF ", "Unexpected keyword!", "there is no @IF"},
    {"@IFx(n)^@THEN y@ENDIF ", "Unexpected keyword!", "@IFx is read as one name"},
    {"@Text ^x", "Left parenthesis expected after TEXT!", "TEXT is a command"},
    {"@ID^, x", "Left parenthesis expected after ID!", "ID is a command"},
    {"@CAP(Text^)", "Left parenthesis expected after TEXT!", "TEXT is a command"},
    {"ann@id^.org", "Left parenthesis expected after ID!", "the @ of a mail address"},
    {"ann^@1.org", "Error in simple statement!", "the @ of a mail address"},
    {"2 ^@ 3", "Error in simple statement!", "an @ of the text"},
    {"@LET(n=3+^[x])", "Unexpected token in expression!", "a value that is a text begins with one"},
    {"@LET(n=-^-n)", "Unexpected token in expression!", "two signs in a row"},
    {"@LET(n ^1;n=2)", "'=' expected after Variable name 'n' in LET!"},
    {"@LET(n=1;^1=2;n=3)", "Variable name expected as start of assignment in LET!"},
    {"@LET(n=2 ^3;n=4)", "Unexpected token in LET!"},
    {"@DEFINE(q$,^q$,r$)", "Variable 'q$' already defined!", "it is defined here first"},
    {"@DEFINE(q$,^)", "Unexpected comma before right parenthesis in DEFINE!"},
    {"@TEXT(1.5^)", "Expected integer value in TEXT!", "TEXT takes whole numbers"},
    {"@TEXT(3;0^)", "Maximum in TEXT must be > 0!"},
    {"@CAP(^1)", "Unexpected token in string expression!", "in a text a number stands in brackets"},
    {"@CAP(^@TEXT(3))", "Unexpected token in string expression!", "in a command functions stand"},
    {"@COMMA_LIST([a]^:[b])", "Unexpected token in COMMA_LIST!"},
    {"@CAP([x) y\\par @COMMA_LIST([a]^,[b])", "Right parenthesis expected after CAP!",
     "the text that begins here goes on behind its paragraph"},
    {"@CALL(^)", "Function name expected after CALL!"},
    {"@INCLUDE(^1)", "File name expected after INCLUDE!"},
    {"@EVAL(^)", "Unexpected token in string expression!"},
    {"^@COMMENT_END ", "Unexpected keyword!", "there is no @COMMENT for it"},
    {"^@DEFER_END @PRINT_DEFERRED(ASC)", "Unexpected keyword!", "there is no @DEFER_START",
     Where::outsideBlocks},
    {"@DEFER_START(1 ^x)b@DEFER_END @PRINT_DEFERRED(ASC)",
     "Right parenthesis expected at end of DEFER_START condition!"},
    {"@DEFER_START(1)a@DEFER_END ^text @DEFER_START(2)b@DEFER_END @PRINT_DEFERRED(ASC)",
     "@PRINT_DEFERRED expected!", "between blocks nothing but white space"},
    {"@DEFER_START(1)a@DEFER_END @ID(x)^\\par @DEFER_START(2)b@DEFER_END @PRINT_DEFERRED(ASC)",
     "@PRINT_DEFERRED expected!", "formatting and paragraph marks count as text"},
    {"@DEFER_START(1)a@DEFER_END ^{}@DEFER_START(2)b@DEFER_END @PRINT_DEFERRED(ASC)",
     "@PRINT_DEFERRED expected!", "formatting and paragraph marks count as text"},
    {"@DEFER_START(1)a@DEFER_END@PRINT_DEFERRED(^UP)",
     "Unrecognized sort order in @PRINT_DEFERRED!"},
};

/// Faults that run up to the end of a template or of a deferred block, where most are found.
inline constexpr FaultKind cOpenKinds[] = {
    {"@IF(n)@THEN x ", "@ENDIF expected!", "this @IF has no @ENDIF"},
    {"@IF(n)@THEN x@ENDIFx y ", "@ENDIF expected!", "@ENDIFx is read as one name"},
    {"@IF(n)@THEN x@COMMENT @ENDIF x\\par ", "End of Comment Missing!", "this comment has no"},
    {"@CAP(^[x", "String constant not terminated!", "in this command a text has no ]"},
    {"@DEFER_START(n)a@DEFER_END ", "@PRINT_DEFERRED expected!", "this group of blocks has no"},
};

/// A template with faults at known places.
class PlantedTemplate {
public:
    PlantedTemplate(Dice& dice, int faults) : m_dice(dice), m_left(faults) {
        m_text = "{\\rtf @DEFINE(n)";
        while (m_left > 0) Write(cDepth);
        m_text += "{} end ";
        PlantOpen();
        EndOpen();
    }

    const std::string& Text() const { return m_text; }
    const std::vector<PlantedFault>& Faults() const { return m_faults; }

private:
    static constexpr int cDepth = 3;

    void Write(int depth) {
        WriteCorrect();
        if (depth == 0 || m_dice.OneIn(2)) return Plant();
        if (m_dice.OneIn(3)) {
            m_text += "@DEFER_START(n)";
            ++m_blocks;
            Write(depth - 1);
            --m_blocks;
            PlantOpen();
            EndOpen();
            m_text += "@DEFER_END @DEFER_START(2)";
            WriteCorrect();
            m_text += "@DEFER_END @PRINT_DEFERRED(DSC)";
        } else {
            ++m_conditions;
            m_text += "@IF(n=1)@THEN ";
            Write(depth - 1);
            m_text += "@ELSE ";
            if (m_left > 0) Write(depth - 1);
            m_text += "@ENDIF ";
            --m_conditions;
        }
        WriteCorrect();
    }
    void WriteCorrect() {
        std::string text;
        do {
            text = m_grammar.Write('S', 4, m_dice);
        } while (text.find('/') != std::string::npos);  // it may divide by zero
        m_text += text + "{} ";
    }
    bool IsFor(Where where) const {
        return !(where == Where::outsideConditions && m_conditions > 0) &&
               !(where == Where::outsideBlocks && m_blocks > 0);
    }
    void Plant() {
        const FaultKind* kind = nullptr;
        do {
            kind = &m_dice.Pick(cFaultKinds);
        } while (!IsFor(kind->where));
        Add(*kind);
        m_text += "{} ";
        --m_left;
    }
    void PlantOpen() {
        m_hasOpen = m_dice.OneIn(3);
        if (m_hasOpen) Add(m_dice.Pick(cOpenKinds));
    }
    /// The text ends here that the last fault runs through.
    void EndOpen() {
        if (!m_hasOpen || m_faults.back().offset != 0) return;
        m_faults.back().offset = m_text.size();
        m_faults.back().word.clear();
    }
    void Add(const FaultKind& kind) {
        const std::string number = std::to_string(++m_number);
        PlantedFault& fault = m_faults.emplace_back();
        for (const char ch : kind.message) fault.message += ch == '$' ? number : std::string(1, ch);
        fault.note = kind.note;
        fault.word = "word" + number;
        m_text += "\\par " + fault.word + " ";
        for (const char ch : kind.text) {
            if (ch == '^') {
                fault.offset = m_text.size();
            } else {
                m_text += ch == '$' ? number : std::string(1, ch);
            }
        }
    }

    Dice& m_dice;
    Grammar m_grammar = templateGrammar();
    std::string m_text;
    std::vector<PlantedFault> m_faults;
    int m_left;
    int m_number = 0;
    int m_conditions = 0;
    int m_blocks = 0;
    bool m_hasOpen = false;
};

}  // namespace tessalink::test
