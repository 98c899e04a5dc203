// The style of the page, for wide and narrow windows, for dark ones, and for paper.
#pragma once

#include <string_view>

namespace KelmoLibs::Lang {

constexpr std::string_view kHtmlStyle = R"css(
:root {
  color-scheme: light dark;
  --back: #fff; --card: #f6f7f9; --text: #1c2128; --soft: #59636e; --line: #d5dae0;
  --error: #b42318; --warning: #8a5a00; --note: #1f5fae; --good: #1a7f37;
  --mark: #ffe08a; --mark-text: #1c2128; --unseen: #8250df;
}
@media (prefers-color-scheme: dark) {
  :root {
    --back: #14181d; --card: #1d232a; --text: #e4e8ec; --soft: #9aa5b1; --line: #38414b;
    --error: #ff8579; --warning: #eeb44f; --note: #7db8ff; --good: #57c773;
    --mark: #6b5200; --mark-text: #fff4d1; --unseen: #c9a5ff;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; max-width: 64rem; padding: 1.5rem 1.25rem 4rem;
  background: var(--back); color: var(--text);
  font: 1rem/1.5 system-ui, "Segoe UI", Roboto, "Noto Sans", sans-serif;
  overflow-wrap: anywhere;
}
h1 { margin: 0 0 .5rem; font-size: 1.6rem; line-height: 1.2; }
h2 { margin: 2.5rem 0 .75rem; padding-bottom: .3rem; border-bottom: 1px solid var(--line); font-size: 1.25rem; }
h3 { margin: 0 0 .25rem; font-size: 1rem; }
p { margin: .35rem 0; }
a { color: var(--note); }
.soft, caption { color: var(--soft); }
.error { --own: var(--error); }
.warning { --own: var(--warning); }
.note { --own: var(--note); }
.good { --own: var(--good); }
.count {
  display: inline-block; margin: .2rem .4rem .2rem 0; padding: .1rem .7rem;
  border: 1px solid var(--own); border-radius: 1rem; color: var(--own); font-weight: 600;
}
table { width: 100%; margin: 1rem 0; border-collapse: collapse; }
th, td { padding: .35rem .6rem; border-bottom: 1px solid var(--line); text-align: start; vertical-align: top; }
th { color: var(--soft); font-size: .85rem; font-weight: 600; }
th.number, td.number { text-align: end; white-space: nowrap; font-variant-numeric: tabular-nums; }
td.number { color: var(--soft); }
td.some { color: var(--own); font-weight: 600; }
.box { margin: 1rem 0; padding: .6rem .9rem; border: 1px solid var(--line); border-radius: .4rem; }
.box ul { margin: .35rem 0; padding-inline-start: 1.4rem; }
.rule {
  margin: 1rem 0; padding: .75rem .9rem; background: var(--card);
  border-inline-start: .3rem solid var(--own); border-radius: .2rem;
}
.rule > h3 { color: var(--own); }
.rule > h3::first-letter, th::first-letter { text-transform: uppercase; }
.finding { margin: .75rem 0 0; break-inside: avoid; }
.finding + .finding { padding-top: .6rem; border-top: 1px solid var(--line); }
.where { color: var(--soft); }
.source {
  display: block; margin: .3rem 0; padding: .3rem .5rem; background: var(--back);
  border: 1px solid var(--line); border-radius: .2rem;
  font: .9rem/1.5 ui-monospace, Consolas, "DejaVu Sans Mono", monospace; white-space: pre-wrap;
}
.source mark { background: var(--mark); color: var(--mark-text); }
.source i { color: var(--unseen); font-style: normal; }
.source mark i { color: inherit; text-decoration: underline; }
code { font: .9em ui-monospace, Consolas, "DejaVu Sans Mono", monospace; }
details { margin: .75rem 0 .25rem; padding-top: .6rem; border-top: 1px solid var(--line); }
summary { color: var(--soft); cursor: pointer; }
dl { margin: .25rem 0 0; }
dt { color: var(--soft); font-size: .85rem; font-weight: 600; }
dd { margin: 0 0 .35rem; }
footer { margin-top: 3rem; color: var(--soft); font-size: .9rem; }
@media (max-width: 40rem) {
  body { padding: 1rem .8rem 3rem; }
  h1 { font-size: 1.3rem; }
  th, td { padding: .35rem .3rem; }
  .rule { padding: .6rem .65rem; }
}
@media print {
  :root { --back: #fff; --card: #fff; --text: #000; --soft: #444; --mark: #ddd; --mark-text: #000; }
  body { max-width: none; padding: 0; font-size: 10pt; }
}
)css";

}  // namespace KelmoLibs::Lang
