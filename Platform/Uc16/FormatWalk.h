// The one walk over a format, for its estimate and its writing alike: the two cannot disagree.
#pragma once

#include <cstddef>

#include "Platform/Uc16/FormatArguments.h"
#include "Platform/Uc16/FormatConversion.h"

namespace Uc16 {

/// Calls `sink.Literal(units, count)` for what stands in the format and `sink.Convert(conversion,
/// argument)` for each conversion of a number or text, in their order.
template <class Sink>
void WalkFormat(const unsigned short* format, va_list args, Sink& sink) {
    Arguments arguments(args);
    const auto literal = [&](const unsigned short* first, const unsigned short* last) {
        if (first != last) {
            sink.Literal(first, static_cast<std::size_t>(last - first));
        }
    };
    const unsigned short* at = format;
    while (*at != 0) {
        const unsigned short* const run = at;
        while (*at != '%' && *at != 0) {
            ++at;
        }
        literal(run, at);
        if (*at == 0) {
            return;
        }
        const unsigned short* const start = at;
        Conversion conversion;
        Argument argument;  // set by Take
        at = ParseConversion(start + 1, conversion);
        if (conversion.action == Action::kPercent) {
            literal(at - 1, at);
        } else if (conversion.action == Action::kUnknown || !arguments.Take(conversion, argument, start)) {
            literal(start, at);
        } else if (conversion.action != Action::kCount) {
            sink.Convert(conversion, argument);
        }
    }
}

}  // namespace Uc16
