#include "platform/files/detail/LocaleFormats.h"

#include <gtest/gtest.h>

#include "tests/support/LocaleText.h"

namespace tessalink::test {
namespace {

using detail::LocaleFormats;
using detail::localeOf;

constexpr const char* cDefault = "[:] 24 [/] MDY";

struct Case {
    LocaleFormats formats;
    const char* values;
};

std::string valuesOf(const LocaleFormats& formats) {
    return textOf(localeOf(formats));
}

TEST(LocaleFormats, FormatsOfSystems) {
    const Case table[] = {
        {{"%H:%M:%S", "%I:%M:%S %p", "AM", "PM", "%m/%d/%y"}, cDefault},
        // en_US
        {{"%r", "%I:%M:%S %p", "AM", "PM", "%m/%d/%Y"}, "[:] 12 [AM] [PM] [/] MDY"},
        // hy_AM: neither indicators nor what %r means
        {{"%r", "", "", "", "%m/%d/%y"}, "[:] 12 [AM] [PM] [/] MDY"},
        // de_DE
        {{"%T", "", "", "", "%d.%m.%Y"}, "[:] 24 [.] DMY"},
        // fi_FI
        {{"%H.%M.%S", "", "", "", "%d.%m.%Y"}, "[.] 24 [.] DMY"},
        // bg_BG, of now and before
        {{"%k:%M:%S", "", "", "", "%e.%m.%Y"}, "[:] 24 [.] DMY"},
        {{"%k,%M,%S", "", "", "", "%e.%m.%Y"}, "[,] 24 [.] DMY"},
        // fa_IR
        {{"%OH:%OM:%OS", "", "", "", "%Oy/%Om/%Od"}, "[:] 24 [/] YMD"},
        {{"%OI:%OM:%OS %p", "", "", "", "%Oy/%Om/%Od"}, "[:] 12 [AM] [PM] [/] YMD"},
        // sl_SI
        {{"%T", "", "", "", "%d. %m. %Y"}, "[:] 24 [. ] DMY"},
        // hu_HU, whose %r is a 24-hour clock
        {{"%r", "%H:%M:%S", "de.", "du.", "%Y. %m. %d."}, "[:] 24 [. ] YMD"},
        {{"%H:%M:%S", "%H:%M:%S", "", "", "%Y-%m-%d"}, "[:] 24 [-] YMD"},
        {{"%H:%M:%S", "", "", "", "%F"}, "[:] 24 [-] YMD"},
        {{"%R", "", "", "", "%D"}, cDefault},
        // lv_LV
        {{"%T", "", "", "", "%Y.%m.%d."}, "[:] 24 [.] YMD"},
        // Spanish with a no-break and a narrow no-break blank
        {{"%r", "%I:%M:%S %p", "a.\u00A0m.", "p.\u00A0m.", "%d/%m/%y"},
         "[:] 12 [a. m.] [p. m.] [/] DMY"},
        {{"%I:%M:%S\u202F%p", "", "a.\u202Fm.", "p.\u202Fm.", "%d de %b de %Y"},
         "[:] 12 [a. m.] [p. m.] [de ] DMY"},
        // ko_KR, zh_CN, ja_JP: texts that Windows-1252 lacks
        {{"%H시 %M분 %S초", "", "오전", "오후", "%Y년 %m월 %d일"}, "[:] 24 [/] YMD"},
        {{"%p %I시 %M분 %S초", "", "오전", "오후", "%Y년 %m월 %d일"},
         "[:] 12 front [AM] [PM] [/] YMD"},
        {{"%r", "%p%I時%M分%S秒", "午前", "午後", "%Y年%m月%d日"},
         "[:] 12 front [AM] [PM] [/] YMD"},
        // el_GR
        {{"%r", "%I:%M:%S %p", "πμ", "μμ", "%d/%m/%Y"}, "[:] 12 [AM] [PM] [/] DMY"},
        // only one of the indicators can be written
        {{"%r", "", "ÖÖ", "ΜΜ", "%D"}, "[:] 12 [AM] [PM] [/] MDY"},
        {{"%r", "", "\u00D6\u00D6", "\u00D6S", "%D"}, "[:] 12 [\xD6\xD6] [\xD6S] [/] MDY"},
        // one of them empty, or both the same
        {{"%r", "", "", "PM", "%D"}, "[:] 12 [AM] [PM] [/] MDY"},
        {{"%r", "", "m", "m", "%D"}, "[:] 12 [AM] [PM] [/] MDY"},
        {{"%l:%M %P", "", "am", "pm", "%b %e, %Y"}, "[:] 12 [am] [pm] [/] MDY"},
        {{"%-I h %-M", "", "am", "pm", "%-d-%_m-%04Y"}, "[h ] 12 [am] [pm] [-] DMY"},
    };
    for (const auto& [formats, values] : table) {
        EXPECT_EQ(valuesOf(formats), values) << formats.time << " and " << formats.date;
    }
}

TEST(LocaleFormats, WhatCannotBeReadKeepsItsDefault) {
    const Case table[] = {
        {{"", "", "", "", ""}, cDefault},
        {{"%", "%", "%", "%", "%"}, cDefault},
        {{"%H:%M:%", "", "", "", "%d.%m.%Y%-"}, "[:] 24 [.] DMY"},
        {{"%I:%E", "", "AM", "PM", "%d.%m.%EO09"}, cDefault},
        {{"%M.%H", "", "", "", "%d.%m"}, cDefault},
        {{"%S.%M", "", "", "", "%Y %j"}, cDefault},
        {{"%r", "%r", "AM", "PM", "%D"}, cDefault},
        {{"%I.%S.%M %p", "", "AM", "PM", "%D"}, "[:] 12 [AM] [PM] [/] MDY"},
        {{"%H%M%S", "", "", "", "%Y%m%d"}, "[:] 24 [/] YMD"},
        {{"%H\xFF%M", "", "", "", "%d\xC3%m\xC3%Y"}, "[:] 24 [/] DMY"},
        // A separator of blanks could not be told from those that belong to the numbers.
        {{"%H %M %S", "", "", "", "%d %m %Y"}, "[:] 24 [/] DMY"},
        {{"%H\u00A0%M", "", "", "", "%d\u202F%m\u202F%Y"}, "[:] 24 [/] DMY"},
        {{"%H\u00A0h\u00A0%M", "", "", "", "%d \u2009. %m"}, "[h ] 24 [/] MDY"},
        {{"%H\u00A0\u00A0h %M", "", "", "", "%d \u2009. %m. %y"}, "[h ] 24 [. ] DMY"},
    };
    for (const auto& [formats, values] : table) {
        EXPECT_EQ(valuesOf(formats), values) << formats.time << " and " << formats.date;
    }
}

}  // namespace
}  // namespace tessalink::test
