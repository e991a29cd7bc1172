// The cases of the transcoding family, what they work on, and the subjects that have them.
//
// Every text is given in the subject's own string type and comes back as a fresh one, so that no
// conversion but the one measured is charged to anybody. Each case has a second row, in which it is written
// into a buffer that is there and large enough.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace Bench::Transcoding {

/// Texts of one script and size; the same texts in both forms.
struct UnicodeCase {
    std::string toWide;    ///< "family/case"
    std::string fromWide;  ///< "family/case"
    std::vector<std::string> narrow;
    std::vector<std::u16string> wide;
};

/// A text in an encoding that is not Unicode's, and in UTF-16.
struct EncodingCase {
    std::string toWide;
    std::string fromWide;
    std::string encoding;
    std::vector<std::string> narrow;
    std::vector<std::u16string> wide;
};

struct Inputs {
    std::vector<UnicodeCase> unicode;
    std::vector<EncodingCase> encodings;
};

/// The text of a script, for cases of any size.
struct Script {
    std::string name;
    std::string text;                    ///< UTF-8
    std::vector<std::string> encodings;  ///< Those that the script is written in.
};

/// Texts made by rule, or read from the files "text-SCRIPT.utf8.txt" of `folder` if that is not "".
/// Throws std::runtime_error if one of them cannot be read.
[[nodiscard]] std::vector<Script> Scripts(const std::string& folder);
/// Texts of `size` bytes or a little less, whole characters, from all over `text`.
[[nodiscard]] std::vector<std::string> Slices(const std::string& text, std::size_t size, std::size_t count);
[[nodiscard]] std::u16string Widened(const std::string& utf8);
/// `utf8` in an encoding, without the characters that some subject converts otherwise; both forms.
[[nodiscard]] EncodingCase Encoded(const std::string& encoding, const std::string& script, const std::string& utf8);

/// Behind a case's name: the row of those who write into a ready buffer.
inline const std::string kIntoBuffer = ", into a buffer";

/// A buffer with room for any of `texts` when each of its elements becomes up to `most` of the buffer's.
template <class To, class From>
std::vector<To> BufferFor(const std::vector<From>& texts, std::size_t most) {
    std::size_t size = 0;
    for (const From& text : texts) {
        size = std::max(size, text.size());
    }
    return std::vector<To>(size * most + 64);
}

struct Subject {
    std::string name;
    /// Registers the subject's cases under `name`; `inputs` outlives them.
    void (*addCases)(const std::string& name, const Inputs& inputs);
};

std::vector<Subject>& Subjects();

/// Adds a subject from a file of its own, ahead of main.
struct AddSubject {
    explicit AddSubject(Subject subject) { Subjects().push_back(std::move(subject)); }
};

/// Registers the growth table's operations; `scripts` outlives them.
void AddGrowth(const std::vector<Script>& scripts);

inline const std::string kOneThread = "transcoding/100 B, 1 thread";
inline const std::string kTwoThreads = "transcoding/100 B, 2 threads";
inline const std::string kEightThreads = "transcoding/100 B, 8 threads";

}  // namespace Bench::Transcoding
