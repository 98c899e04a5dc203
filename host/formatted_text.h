// The text of a key with its placeholders filled.
#pragma once

#include <string_view>

#include "host/argument.h"
#include "host/problem_list.h"
#include "host/text_sink.h"
#include "host/view.h"

namespace KelmoLibs::Host {

/// Writes the text of `key`, in the form for `count` unless that is null. What cannot be filled is a
/// problem: in `problems`, or in the view's record if that is null. A sink that only measures
/// tells nothing: the next call does. False if no language has the
/// key: it writes what stands for it. Throws only std::bad_alloc; see View::FindForm.
bool WriteFormatted(const View& view, std::string_view key, const Arguments& arguments,
                    const Argument* count, TextSink& sink, ProblemList* problems);

}  // namespace KelmoLibs::Host
