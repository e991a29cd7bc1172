// Boost.URL: one buffer with the text and a table of offsets; printing copies the buffer.
#include <boost/url.hpp>
#include <string>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

boost::urls::url Parse(const std::string& text) {
    const auto parsed = boost::urls::parse_uri_reference(text);
    return parsed ? boost::urls::url(*parsed) : boost::urls::url();
}

bool Reparse(boost::urls::url& url, const std::string& text) {
    const auto parsed = boost::urls::parse_uri_reference(text);
    if (parsed) {
        url = *parsed;
    }
    return parsed.has_value();
}

std::string Print(const boost::urls::url& url) { return std::string(url.buffer()); }

void AddCases(const std::string& name, const Inputs& inputs) {
    AddCase(kParseFresh, name, inputs.urls, Parse);
    AddCase(kParseOneStep, name, inputs.urls, Parse);
    AddCase(kParseReused, name, inputs.urls,
            [url = boost::urls::url()](const std::string& text) mutable { return Reparse(url, text); });
    AddPreparedCase(kPrint, name, inputs.printed, Parse, Print);
}

bool Accepts(const std::string& text) { return boost::urls::parse_uri_reference(text).has_value(); }

const AddSubject add{{"Boost.URL", Accepts, AddCases}};

}  // namespace
}  // namespace Bench::Uri
