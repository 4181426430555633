// Made by make_nearest_letters.py; do not edit.
#include "platform/base/detail/NearestLetters.h"

namespace tessalink::detail {

// clang-format off
const std::array<NearestBlock, cNearestBlocks> cNearestLetters = {{
    {0x0100,
     "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkKLlLlLlLlLlNnNnNnnNnOoOoOo\214\234"
     "RrRrRrSsSsSs\212\232TtTtTtUuUuUuUuUuUuWwYy\237ZzZz\216\236sbBBb__OCcDDDd_EAE_\203GG_IIKkl_"
     "_NnOOo__PpR_____TtTUuUVYyZz_____________DDdLLlNNnAaIiOoUu\334\374\334\374\334\374\334\374e"
     "\304\344Aa\306\346GgGgKkOoOo__jDDdGg__Nn\305\345\306\346\330\370AaAaEeEeIiIiOoOoRrRrUuUuSs"
     "TtYyHhN___ZzAaEe\326\366\325\365OoOoYy______ACcLT____BU_EeJj__RrYy"},
    {0x0250,
     "___bo_dd_a_e____g__g____ii________n__o__________r_______tuuv______________________________"
     "______"},
    {0x02B0,
     "h_jr___wy'\"\221\222\221________\210_'_______________      __glsx_________________________"
     "___"},
    {0x0370,
     "____'_____ ___;_____  \301\267\311\315\315_\323_\335\323\357AVGDEZITIKLMNXOPR_STYFCPO\317"
     "\237\341\351\355\355\377avgdezitiklmnxoprsstyfcpo\357\377\363\375\363_vtY\335\237fp_______"
     "__________________krs_Te___S______"},
    {0x0400,
     "\310\313DG\312Z\314\314JLNCK\314UDABVGDE\216ZIJKLMNOPRSTUFHCC\212S\"Y'\310\333\302abvgde"
     "\236zijklmnoprstufhcc\232s\"y'\350\373\342\350\353dg\352z\354\354jlnck\354ud__Ee__________"
     "____FfYyYy________________________GgGg__Zz__Kk____KkNn__________UuUuHh__Cc__Hh_____\216"
     "\236_____________Aa\304\344__EeAa\304\344\216\236Zz__Ii\317\357\326\366Oo\326\366\310\350U"
     "u\334\374UuCc__\237\377______"},
    {0x1E00,
     "AaBbBbBb\307\347DdDdDdDdDd\310\350\311\351EeEeEeFfGgHhHhHhHhHhIi\317\357KkKkKkLlLlLlLlMmMm"
     "MmNnNnNnNn\325\365\325\365\322\362\323\363PpPpRrRrRrRrSsSsSs\212\232SsTtTtTtTtUuUuUu\332"
     "\372\334\374VvVvWwWwWwWwWwXxXxYyZzZzZzhtwyas__\337_AaAa\302\342\302\342\302\342\302\342"
     "\302\342\301\341\300\340Aa\303\343AaEeEeEe\312\352\312\352\312\352\312\352\312\352IiIiOoOo"
     "\324\364\324\364\324\364\324\364\324\364\323\363\322\362Oo\325\365OoUuUu\332\372\331\371Uu"
     "UuUuYyYyYyYy______"},
    {0x1F00,
     "aa\340\340\341\341aaAA\300\300\301\301AAee\350\350\351\351__EE\310\310\311\311__ii\354\354"
     "\355\355iiII\314\314\315\315IIii\354\354\355\355iiII\314\314\315\315IIoo\362\362\363\363__"
     "OO\322\322\323\323__yyyy\375\375yy_Y_Y_\335_Yoo\362\362\363\363ooOO\322\322\323\323OO\340"
     "\341\350\351\354\355\354\355\362\363y\375\362\363__aa\340\340\341\341aaAA\300\300\301\301A"
     "Aii\354\354\355\355iiII\314\314\315\315IIoo\362\362\363\363ooOO\322\322\323\323OOaa\340a"
     "\341_aaAA\300\301A i   \354i\355_ii\310\311\314\315I   ii\357\357__i\357II\314\315_   yy"
     "\377\377rry\377YYY\335R  `__\362o\363_oo\322\323\322\323O  _"},
    {0x2000,
     "       \240   _____--\226\226\227\227| \221\222\202\221\223\224\204\223\206\207\225\225..."
     "\267  _____\240\211_'\"''\"'_\213\233_!_ _____/____!_____________'_______ ________________"},
    {0x2070,
     "0i__456789+-=()n0123456789+-=()_aeoxahklmnpst___"},
    {0x2100,
     "aaC\260_ccE_\260gHHHhhIILl_NN__PQRRR__STT_Z_O_Z_K\305BC_eEF_Mo____i_FpgGP_____Ddeij______"},
    {0x2212,
     "-__/"},
    {0xFB00,
     "fffffss"},
    {0xFF01,
     "!\"#$%&'()*+,-./0123456789:;<=>_@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^"},
    {0xFF40,
     "`abcdefghijklmnopqrstuvwxyz{|}~"},
}};
// clang-format on

}  // namespace tessalink::detail
