#pragma once

#include <string>

#include "report/VarTable.h"
#include "tests/support/Dice.h"

namespace tessalink::test {

/// Writes random templates that follow the grammar. Their variables i and j are integers, d is a
/// double, s and t are texts, and of v, w and x any type may be.
class TemplateWriter {
public:
    explicit TemplateWriter(Dice& dice) : m_dice(dice) {}

    std::string Write() {
        m_defined = 0;
        return "@DEFINE(n)" + Statements(3);
    }

    /// Gives the variables random values.
    static void Fill(VarTable& variables, Dice& dice) {
        for (const char* name : {"i", "j"}) variables.AddVar(name, static_cast<int>(dice.Below(4)));
        variables.AddVar("d", 0.5 * static_cast<double>(dice.Below(5)));
        for (const char* name : {"s", "t"})
            variables.AddVar(name, dice.Text(dice.Below(3), "ab").c_str());
        for (const char* name : {"v", "w", "x"}) {
            switch (dice.Below(3)) {
                case 0:
                    variables.AddVar(name, static_cast<int>(dice.Below(3)));
                    break;
                case 1:
                    variables.AddVar(name, 1.5);
                    break;
                default:
                    variables.AddVar(name, "text");
            }
        }
    }

private:
    std::string Statements(int depth) {
        std::string text;
        for (std::size_t count = m_dice.Below(4); count > 0; --count) text += Statement(depth);
        return text;
    }
    std::string Statement(int depth) {
        switch (m_dice.Below(depth > 0 ? 15 : 12)) {
            case 0:
                return "@" + Name() + " ";
            case 1:
                return "@COMPUTE(" + Number(depth) + ":" + Number(0) + ")";
            case 2:
                return "@TEXT(" + Whole() + ")";
            case 3:
                return "@CAP(" + Text(depth) + ")";
            case 4:
                return "@COMMA_LIST(" + Text(depth) + "," + Text(depth) + ";" + Text(depth) + ")";
            case 5:
                return "@LET(" + Name() + "=" + Number(depth) + ")";
            case 6:
                return "@LET(" + Name() + "=" + Text(depth) + ";" + Name() + "=" + Name() +
                       ")\\par ";
            case 7:
                return "@EVAL(" + Text(depth) + ") ";
            case 8:
                return "@CALL(f)@LINK @ID(@x)@COMMENT @THEN @COMMENT_END ";
            case 9:
                return Define("y" + std::to_string(++m_defined));
            case 10:
                return "@@ \\par\r\n";
            case 11:
                return "text";
            case 12:
            case 13:
                return Condition(depth);
            default:
                return Group(depth);
        }
    }
    std::string Define(const std::string& name) {
        return "@DEFINE(" + name + ")@LET(" + name + "=1)";
    }
    std::string Condition(int depth) {
        std::string text = "@IF(" + Number(depth) + ")@THEN " + Statements(depth - 1);
        if (m_dice.OneIn(2)) text += "@ELSE " + Statements(depth - 1);
        return text + "@ENDIF ";
    }
    std::string Group(int depth) {
        std::string text;
        for (std::size_t count = 1 + m_dice.Below(2); count > 0; --count) {
            text += "@DEFER_START(" + Number(0) + ")" + Statements(depth - 1) + "@DEFER_END ";
        }
        return text + (m_dice.OneIn(2) ? "@PRINT_DEFERRED(ASC)" : "@PRINT_DEFERRED(DSC)");
    }
    std::string Number(int depth) {
        static constexpr const char* operators[] = {"+", "-", "*", "/", "<", "=", "&", "|"};
        switch (m_dice.Below(depth > 0 ? 6 : 4)) {
            case 0:
                return std::to_string(m_dice.Below(4));
            case 1:
                return m_dice.OneIn(3) ? "1.5" : "2";
            case 2:
            case 3:
                return Name();
            case 4:
                return "(-" + Number(0) + ")";
            default:
                return "(" + Number(depth - 1) + m_dice.Pick(operators) + Number(depth - 1) + ")";
        }
    }
    /// Never a double for sure.
    std::string Whole() {
        return m_dice.OneIn(2) ? Name() : "(" + Name() + "+1)*" + std::to_string(m_dice.Below(9));
    }
    std::string Text(int depth) {
        switch (m_dice.Below(depth > 0 ? 7 : 4)) {
            case 0:
                return "[text]";
            case 1:
                return "[]";
            case 2:
            case 3:
                return Name();
            case 4:
                return Text(depth - 1) + "+" + Text(depth - 1);
            case 5:
                return "TEXT(" + Whole() + ")+CAP(" + Text(depth - 1) + ")";
            default:
                return "EVAL([@" + Name() + " @COMPUTE(1)]+" + Text(depth - 1) + ")";
        }
    }
    std::string Name() {
        static constexpr const char* names[] = {"i", "j", "d", "s", "t", "v", "w", "x", "n", "y1"};
        return m_dice.Pick(names);
    }

    Dice& m_dice;
    int m_defined = 0;
};

}  // namespace tessalink::test
