#pragma once

#include <string>

#include "report/VarTable.h"
#include "tests/support/Grammar.h"

namespace tessalink::test {

/// Templates that follow the grammar. Their variables i and j are integers, d is a double, s and t
/// are texts, and v, w and x may be of any type. TEXT never gets what is a double for sure.
inline Grammar templateGrammar() {
    return Grammar({
        {'S', {"", "$s", "$s$s", "$s$s$s"}},
        {'s',
         {"text", "@@ \\par\r\n", "@CALL(f)@LINK @ID(@x)@COMMENT @THEN @COMMENT_END ", "@$N ",
          "@COMPUTE($E:$E)", "@TEXT($W)", "@CAP($T)", "@COMMA_LIST($T,$T;$T)", "@LET($N=$E)",
          "@LET($N=$T;$N=$N)\\par ", "@EVAL($T) ", "@DEFINE(y$#)", "@IF($E)@THEN $S@ENDIF ",
          "@IF($E)@THEN $S@ELSE $S@ENDIF ",
          "@DEFER_START($E)$S@DEFER_END @DEFER_START($E)$S@DEFER_END @PRINT_DEFERRED($O)"}},
        {'E', {"0", "1", "2", "1.5", "$N", "(-$E)", "($E$P$E)"}},
        {'P', {"+", "-", "*", "/", "<", "=", "&", "|"}},
        {'W', {"3", "$N", "($N+1)*2"}},
        {'T', {"[text]", "[]", "$N", "$T+$T", "TEXT($W)+CAP($T)", "EVAL([@$N @COMPUTE(1)]+$T)"}},
        {'N', {"i", "j", "d", "s", "t", "v", "w", "x", "n", "y1"}},
        {'O', {"ASC", "dsc"}},
    });
}

/// Gives the variables of such templates random values.
inline void fillVariables(VarTable& variables, Dice& dice) {
    for (const char* name : {"i", "j"}) variables.AddVar(name, static_cast<int>(dice.Below(4)));
    for (const char* name : {"s", "t"}) {
        variables.AddVar(name, dice.Text(dice.Below(3), "ab").c_str());
    }
    for (const char* name : {"d", "v", "w", "x"}) {
        variables.AddVar(name, 0.5 * static_cast<double>(dice.Below(5)));
        if (*name != 'd' && dice.OneIn(2)) variables.AddVar(name, static_cast<int>(dice.Below(3)));
        if (*name != 'd' && dice.OneIn(3)) variables.AddVar(name, "text");
    }
}

}  // namespace tessalink::test
