// The number formats of languages, from CLDR 41. Written by tools/make_number_table.py; do not edit.
#pragma once

#include <string_view>

#include "cldr/number_format.h"

namespace KelmoLibs::Cldr {

struct NumberFormatRow {
  std::string_view languages;  // " de id pt-pt "
  NumberFormat format;
};

// clang-format off
inline constexpr NumberFormatRow kNumberTable[] = {
    {" af agq bas br cs de-at dua dyo en-fi en-se en-za eo es-cr ewo ff fr-ca hu hy kab kea kk ksf ky nmg os pt-ao ru sah shi sk smn tg tk tt tzm uk uz yav zgh ",
     {",", "\u00A0", "-", 0x30, 3, 3, 1, false}},
    {" ak am asa bem bez bm bo ce ceb cgg chr cy dav doi ebu en es-419 es-br es-bz es-cu es-do es-gt es-hn es-mx es-ni es-pa es-pe es-pr es-sv es-us fil ga gd guz gv ha haw ig ii ja ji jmc kam kde ki kln kn ko kok ks-deva ksb kw lag lg lkt luo luy mai mas mer mg mgo mi mn ms mt naq nd nds nus nyn om pcm qu rof rwk saq sbp sd-deva sd-in si sn so sw ta-my ta-sg teo th ti tl to tw ug vai vun xog yi yo yue zh zu ",
     {".", ",", "-", 0x30, 3, 3, 1, false}},
    {" ar sd ",
     {"\u066B", "\u066C", "\u061C-", 0x660, 3, 3, 1, false}},
    {" ar-ae ar-eh he iw ur ",
     {".", ",", "\u200E-", 0x30, 3, 3, 1, false}},
    {" ar-dz ar-ly ar-ma ar-tn ",
     {",", ".", "\u200E-", 0x30, 3, 3, 1, false}},
    {" as bn ",
     {".", ",", "-", 0x9E6, 3, 2, 1, false}},
    {" ast az bs ca da de dsb el en-at en-be en-de en-dk en-nl en-si es-ar es-bo es-cl es-co es-ec es-py es-uy es-ve fr-lu fr-ma fur fy gl hsb id in is it jgo jv jw kgp kkj kl km ku lb ln lo lu mgh mk mo ms-bn ms-id mua nl nnh pt qu-bo rn ro rw sc seh sg sh sr su sw-cd tr vi wo yrl ",
     {",", ".", "-", 0x30, 3, 3, 1, false}},
    {" be bg ka lv pl pt-ch pt-cv pt-gq pt-gw pt-lu pt-mo pt-mz pt-pt pt-st pt-tl ru-ua sq ",
     {",", "\u00A0", "-", 0x30, 3, 3, 2, false}},
    {" brx en-in gu hi ml or pa ta te ",
     {".", ",", "-", 0x30, 3, 2, 1, false}},
    {" ccp ",
     {".", ",", "-", 0x11136, 3, 2, 1, false}},
    {" ckb ",
     {"\u066B", "\u066C", "\u200F-", 0x660, 3, 3, 1, false}},
    {" de-ch de-li en-ch it-ch ",
     {".", "\u2019", "-", 0x30, 3, 3, 1, false}},
    {" dje khq mfe ses twq xh ",
     {".", "\u00A0", "-", 0x30, 3, 3, 1, false}},
    {" dz ",
     {".", ",", "-", 0xF20, 3, 2, 1, false}},
    {" ee ",
     {".", ",", "-", 0x30, 3, 3, 3, false}},
    {" en-us-posix ",
     {".", ",", "-", 0x30, 0, 0, 1, false}},
    {" es ia ",
     {",", ".", "-", 0x30, 3, 3, 2, false}},
    {" et ",
     {",", "\u00A0", "\u2212", 0x30, 3, 3, 2, false}},
    {" eu fo hr sl ",
     {",", ".", "\u2212", 0x30, 3, 3, 1, false}},
    {" fa ",
     {"\u066B", "\u066C", "\u200E\u2212", 0x6F0, 3, 3, 1, false}},
    {" ff-adlm ",
     {".", "\u2E41", "-", 0x1E950, 3, 3, 1, false}},
    {" fi ksh lt nb nn no se sv ",
     {",", "\u00A0", "\u2212", 0x30, 3, 3, 1, false}},
    {" fr ",
     {",", "\u202F", "-", 0x30, 3, 3, 1, false}},
    {" gsw rm ",
     {".", "\u2019", "\u2212", 0x30, 3, 3, 1, false}},
    {" ks lrc mzn pa-arab pa-pk ps ur-in uz-af uz-arab ",
     {"\u066B", "\u066C", "\u200E-\u200E", 0x6F0, 3, 3, 1, false}},
    {" mni ",
     {".", ",", "-", 0x9E6, 3, 3, 1, false}},
    {" mr ne sa ",
     {".", ",", "-", 0x966, 3, 2, 1, false}},
    {" my ",
     {".", ",", "-", 0x1040, 3, 3, 1, false}},
    {" sat ",
     {".", ",", "-", 0x1C50, 3, 3, 1, false}},
    {" wae ",
     {",", "\u2019", "-", 0x30, 3, 3, 1, false}},
};
// clang-format on

}  // namespace KelmoLibs::Cldr
