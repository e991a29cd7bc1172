// What the statuses of <Lum/lum.h> say, and which version answers.
#include <array>

#include "Source/CInterface/Call.h"

namespace {

struct Sentence {
    lum_status status;
    const char* text;
};

constexpr std::array kSentences{
    Sentence{LUM_OK, "done"},
    Sentence{LUM_TRUNCATED, "the buffer is too small for the text"},
    Sentence{LUM_NOT_FOUND, "nothing of that name or number"},
    Sentence{LUM_UNRELATED, "the two URIs are not related in that way"},
    Sentence{LUM_BAD_ARGUMENT, "a null pointer or an unknown code was given"},
    Sentence{LUM_NO_MEMORY, "out of memory"},
    Sentence{LUM_FAILED, "the application's own code failed"},
    Sentence{LUM_NOT_OPENED, "the file cannot be opened"},
    Sentence{LUM_SCHEME_TOO_SHORT, "scheme shorter than two characters"},
    Sentence{LUM_SCHEME_NOT_LETTERS, "scheme with a character that is no letter"},
    Sentence{LUM_BACKSLASH_IN_PATH, "backslash in the path"},
    Sentence{LUM_BACKSLASH_IN_NON_HIERARCHICAL, "backslash in the non-hierarchical part"},
    Sentence{LUM_SCHEME_UNKNOWN, "the scheme \"unknown\""},
    Sentence{LUM_NOT_VALID, "not a valid URI"},
    Sentence{LUM_OUTPUT_FULL, "the output is full"},
    Sentence{LUM_MALFORMED, "malformed text"},
    Sentence{LUM_INCOMPLETE, "the text ends within a character"},
    Sentence{LUM_UNMAPPABLE, "a character that the encoding does not have"},
    Sentence{LUM_NO_SUCH_ENCODING, "no such encoding"},
};

}  // namespace

int lum_version() { return LUM_C_VERSION; }

const char* lum_status_text(int status) {
    const auto* const found = std::find_if(kSentences.begin(), kSentences.end(),
                                           [&](const Sentence& sentence) { return sentence.status == status; });
    return found == kSentences.end() ? "unknown status" : found->text;
}
