// Letters with diacritics, as one character and as a letter and a combining mark.
#pragma once

#include <array>
#include <string_view>

namespace KelmoLibs::Lang {

/// The letter at a position of `composed` is that of `letters` with `mark`. The letter itself may be
/// composed. Greek and Cyrillic letters, which look like Latin ones, are escapes.
struct Decompositions {
  char32_t mark;
  std::u32string_view composed;
  std::u32string_view letters;
};

constexpr std::array<Decompositions, 26> kDecompositions = {{
    {0x0300, U"ÀÈÌÒÙàèìòùǛǜǸǹ\u0400\u040D\u0450\u045DḔḕṐṑẀẁẦầẰằỀềỒồỜờỪừỲỳ",
     U"AEIOUaeiouÜüNn\u0415\u0418\u0435\u0438ĒēŌōWwÂâĂăÊêÔôƠơƯưYy"},
    {0x0301, U"ÁÉÍÓÚÝáéíóúýĆćĹĺŃńŔŕŚśŹźǗǘǴǵǺǻǼǽǾǿ\u0386\u0388\u0389\u038A\u038C\u038E\u038F\u0390",
     U"AEIOUYaeiouyCcLlNnRrSsZzÜüGgÅåÆæØø\u0391\u0395\u0397\u0399\u039F\u03A5\u03A9\u03CA"},
    {0x0301, U"\u03AC\u03AD\u03AE\u03AF\u03B0\u03CC\u03CD\u03CE\u0403\u040C\u0453\u045CḈḉḖḗḮḯḰḱḾ",
     U"\u03B1\u03B5\u03B7\u03B9\u03CB\u03BF\u03C5\u03C9\u0413\u041A\u0433\u043AÇçĒēÏïKkM"},
    {0x0301, U"ḿṌṍṒṓṔṕṸṹẂẃẤấẮắẾếỐốỚớỨứ", U"mÕõŌōPpŨũWwÂâĂăÊêÔôƠơƯư"},
    {0x0302, U"ÂÊÎÔÛâêîôûĈĉĜĝĤĥĴĵŜŝŴŵŶŷẐẑẬậỆệỘộ", U"AEIOUaeiouCcGgHhJjSsWwYyZzẠạẸẹỌọ"},
    {0x0303, U"ÃÑÕãñõĨĩŨũṼṽẪẫẴẵẼẽỄễỖỗỠỡỮữỸỹ", U"ANOanoIiUuVvÂâĂăEeÊêÔôƠơƯưYy"},
    {0x0304, U"ĀāĒēĪīŌōŪūǕǖǞǟǠǡǢǣǬǭȪȫȬȭȰȱȲȳḠḡḸḹṜṝ", U"AaEeIiOoUuÜüÄäȦȧÆæǪǫÖöÕõȮȯYyGgḶḷṚṛ"},
    {0x0306, U"ĂăĔĕĞğĬĭŎŏŬŭ\u040E\u0419\u0439\u045EḜḝẶặ",
     U"AaEeGgIiOoUu\u0423\u0418\u0438\u0443ȨȩẠạ"},
    {0x0307, U"ĊċĖėĠġİŻżȦȧȮȯḂḃḊḋḞḟḢḣṀṁṄṅṖṗṘṙṠṡṤṥṦṧṨṩṪṫẆẇẊẋẎẏẛ",
     U"CcEeGgIZzAaOoBbDdFfHhMmNnPpRrSsŚśŠšṢṣTtWwXxYyſ"},
    {0x0308, U"ÄËÏÖÜäëïöüÿŸ\u03AA\u03AB\u03CA\u03CB\u0401\u0407\u0451\u0457ḦḧṎṏṺṻẄẅẌẍẗ",
     U"AEIOUaeiouyY\u0399\u03A5\u03B9\u03C5\u0415\u0406\u0435\u0456HhÕõŪūWwXxt"},
    {0x0309, U"ẢảẨẩẲẳẺẻỂểỈỉỎỏỔổỞởỦủỬửỶỷ", U"AaÂâĂăEeÊêIiOoÔôƠơUuƯưYy"},
    {0x030A, U"ÅåŮůẘẙ", U"AaUuwy"},
    {0x030B, U"ŐőŰű", U"OoUu"},
    {0x030C, U"ČčĎďĚěĽľŇňŘřŠšŤťŽžǍǎǏǐǑǒǓǔǙǚǦǧǨǩǮǯǰȞȟ",
     U"CcDdEeLlNnRrSsTtZzAaIiOoUuÜüGgKkƷ\u0292jHh"},
    {0x030F, U"ȀȁȄȅȈȉȌȍȐȑȔȕ", U"AaEeIiOoRrUu"},
    {0x0311, U"ȂȃȆȇȊȋȎȏȒȓȖȗ", U"AaEeIiOoRrUu"},
    {0x0323, U"ḄḅḌḍḤḥḲḳḶḷṂṃṆṇṚṛṢṣṬṭṾṿẈẉẒẓẠạẸẹỊịỌọỢợỤụỰựỴỵ",
     U"BbDdHhKkLlMmNnRrSsTtVvWwZzAaEeIiOoƠơUuƯưYy"},
    {0x0324, U"Ṳṳ", U"Uu"},
    {0x0325, U"Ḁḁ", U"Aa"},
    {0x0326, U"ȘșȚț", U"SsTt"},
    {0x0327, U"ÇçĢģĶķĻļŅņŖŗŞşŢţȨȩḐḑḨḩ", U"CcGgKkLlNnRrSsTtEeDdHh"},
    {0x0328, U"ĄąĘęĮįŲųǪǫ", U"AaEeIiUuOo"},
    {0x032D, U"ḒḓḘḙḼḽṊṋṰṱṶṷ", U"DdEeLlNnTtUu"},
    {0x032E, U"Ḫḫ", U"Hh"},
    {0x0330, U"ḚḛḬḭṴṵ", U"EeIiUu"},
    {0x0331, U"ḆḇḎḏḴḵḺḻṈṉṞṟṮṯẔẕẖ", U"BbDdKkLlNnRrTtZzh"},
}};

}  // namespace KelmoLibs::Lang
