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

const std::array<OwnBlock, cOwnBlocks> cOwnLetters = {{
    {0x0370,
     u"______________________\u0386_\u0388\u0389\u038A_\u038C_\u038E\u038F\u0390\u0391\u0392"
     u"\u0393\u0394\u0395\u0396\u0397\u0398\u0399\u039A\u039B\u039C\u039D\u039E\u039F\u03A0\u03A1"
     u"_\u03A3\u03A4\u03A5\u03A6\u03A7\u03A8\u03A9\u03AA\u03AB\u03AC\u03AD\u03AE\u03AF\u03B0"
     u"\u03B1\u03B2\u03B3\u03B4\u03B5\u03B6\u03B7\u03B8\u03B9\u03BA\u03BB\u03BC\u03BD\u03BE\u03BF"
     u"\u03C0\u03C1\u03C2\u03C3\u03C4\u03C5\u03C6\u03C7\u03C8\u03C9\u03CA\u03CB\u03CC\u03CD\u03CE"
     u"_\u03B2\u03B8\u03A5\u038E\u03AB\u03C6\u03C0_________________________\u03BA\u03C1\u03C2_"
     u"\u0398\u03B5___\u03A3______"},
    {0x0400,
     u"\u0415\u0401\u0402\u0403\u0404\u0405\u0406\u0407\u0408\u0409\u040A\u040B\u040C\u0418\u040E"
     u"\u040F\u0410\u0411\u0412\u0413\u0414\u0415\u0416\u0417\u0418\u0419\u041A\u041B\u041C\u041D"
     u"\u041E\u041F\u0420\u0421\u0422\u0423\u0424\u0425\u0426\u0427\u0428\u0429\u042A\u042B\u042C"
     u"\u042D\u042E\u042F\u0430\u0431\u0432\u0433\u0434\u0435\u0436\u0437\u0438\u0439\u043A\u043B"
     u"\u043C\u043D\u043E\u043F\u0440\u0441\u0442\u0443\u0444\u0445\u0446\u0447\u0448\u0449\u044A"
     u"\u044B\u044C\u044D\u044E\u044F\u0435\u0451\u0452\u0453\u0454\u0455\u0456\u0457\u0458\u0459"
     u"\u045A\u045B\u045C\u0438\u045E\u045F__\u0415\u0435______________\u0424\u0444\u0418\u0438"
     u"\u0418\u0438________________________\u0490\u0491\u0413\u0433\u0413\u0433\u0416\u0436\u0417"
     u"\u0437\u041A\u043A\u041A\u043A\u041A\u043A\u041A\u043A\u041D\u043D\u041D\u043D\u041F\u043F"
     u"__\u0421\u0441\u0422\u0442\u0423\u0443\u0423\u0443\u0425\u0445\u0426\u0446\u0427\u0447"
     u"\u0427\u0447\u0425\u0445_____\u0416\u0436\u041A\u043A__\u041D\u043D__\u0427\u0447___\u0410"
     u"\u0430\u0410\u0430__\u0415\u0435\u0410\u0430\u0410\u0430\u0416\u0436\u0417\u0437\u0417"
     u"\u0437\u0418\u0438\u0418\u0438\u041E\u043E\u041E\u043E\u041E\u043E\u042D\u044D\u0423\u0443"
     u"\u0423\u0443\u0423\u0443\u0427\u0447__\u042B\u044B______"},
    {0x1F00,
     u"\u03B1\u03B1\u03AC\u03AC\u03AC\u03AC\u03AC\u03AC\u0391\u0391\u0386\u0386\u0386\u0386\u0386"
     u"\u0386\u03B5\u03B5\u03AD\u03AD\u03AD\u03AD__\u0395\u0395\u0388\u0388\u0388\u0388__\u03B7"
     u"\u03B7\u03AE\u03AE\u03AE\u03AE\u03AE\u03AE\u0397\u0397\u0389\u0389\u0389\u0389\u0389\u0389"
     u"\u03B9\u03B9\u03AF\u03AF\u03AF\u03AF\u03AF\u03AF\u0399\u0399\u038A\u038A\u038A\u038A\u038A"
     u"\u038A\u03BF\u03BF\u03CC\u03CC\u03CC\u03CC__\u039F\u039F\u038C\u038C\u038C\u038C__\u03C5"
     u"\u03C5\u03CD\u03CD\u03CD\u03CD\u03CD\u03CD_\u03A5_\u038E_\u038E_\u038E\u03C9\u03C9\u03CE"
     u"\u03CE\u03CE\u03CE\u03CE\u03CE\u03A9\u03A9\u038F\u038F\u038F\u038F\u038F\u038F\u03AC\u03AC"
     u"\u03AD\u03AD\u03AE\u03AE\u03AF\u03AF\u03CC\u03CC\u03CD\u03CD\u03CE\u03CE__\u03B1\u03B1"
     u"\u03AC\u03AC\u03AC\u03AC\u03AC\u03AC\u0391\u0391\u0386\u0386\u0386\u0386\u0386\u0386\u03B7"
     u"\u03B7\u03AE\u03AE\u03AE\u03AE\u03AE\u03AE\u0397\u0397\u0389\u0389\u0389\u0389\u0389\u0389"
     u"\u03C9\u03C9\u03CE\u03CE\u03CE\u03CE\u03CE\u03CE\u03A9\u03A9\u038F\u038F\u038F\u038F\u038F"
     u"\u038F\u03B1\u03B1\u03AC\u03B1\u03AC_\u03AC\u03AC\u0391\u0391\u0386\u0386\u0391_\u03B9___"
     u"\u03AE\u03B7\u03AE_\u03AE\u03AE\u0388\u0388\u0389\u0389\u0397___\u03B9\u03B9\u0390\u0390__"
     u"\u03AF\u0390\u0399\u0399\u038A\u038A____\u03C5\u03C5\u03B0\u03B0\u03C1\u03C1\u03CD\u03B0"
     u"\u03A5\u03A5\u038E\u038E\u03A1_____\u03CE\u03C9\u03CE_\u03CE\u03CE\u038C\u038C\u038F\u038F"
     u"\u03A9___"},
}};

const std::string_view cPlainLetters =
    "E_'f\".__^_S<O_Z__''\"\"*--~Ts>o_zY !____|_ ca\"__r __23'__. 1o\"113_AAAAAAACEEEEIIIIDNOOO"
    "OOxOUUUUYTsaaaaaaaceeeeiiiidnooooo/ouuuuyty";
// clang-format on

}  // namespace tessalink::detail
