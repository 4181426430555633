#include "report/FaultText.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "core/InputError.h"
#include "report/ParseException.h"

namespace tessalink::test {
namespace {

TEST(FaultText, SaysThePlaceAsFarAsItIsKnown) {
    const struct {
        TextPlace place;
        const char* text;
    } table[] = {{{"norms.csv", 12, 13}, "norms.csv:12:13"},
                 {{"norms.csv", 12, 0}, "norms.csv:12"},
                 {{"norms.csv", 0, 13}, "norms.csv"},
                 {{"", 18446744073709551615u, 1}, "18446744073709551615:1"},
                 {{}, ""}};
    for (const auto& row : table) {
        EXPECT_EQ(row.place.Format(), row.text);
        const CString colon = row.place.Format().IsEmpty() ? "" : ": ";
        EXPECT_EQ(faultText(InputError(row.place, "no number")), row.text + colon + "no number");
    }
    EXPECT_EQ(faultText(std::runtime_error("no memory")), "no memory");
    EXPECT_EQ(faultText(CException("damaged")), "damaged");
}

TEST(FaultText, LeadsFromATemplatesFaultToItsIncludes) {
    ParseException fault("Undefined variable 'u' found!");
    EXPECT_EQ(faultText(fault), "Undefined variable 'u' found!");
    fault.SetPlace({"part.rtf", 2, 7}, {"", 1, 4});
    fault.AddInclude({"letter.rtf", 8, 1});
    fault.AddInclude({"all.rtf", 3, 2});
    EXPECT_EQ(faultText(fault),
              "part.rtf:2:7: Undefined variable 'u' found!\n"
              "part.rtf:2:7: at 1:4 of the evaluated text\n"
              "letter.rtf:8:1: included from here\n"
              "all.rtf:3:2: included from here");
}

}  // namespace
}  // namespace tessalink::test
