// A log of an old program for a new one: from its encoding to UTF-8, whatever bytes are bad; times in the form of the
// W3C; no passwords and no values of the named keys in the links.
//
// Usage: logs ENCODING [KEY...] <LOG. A line begins with day.month.year hour:minute:second.
#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/LossyConversion.h>
#include <Lum/Redaction.h>
#include <Lum/TimeStamp.h>

namespace {

// The line with its time in the form that sorts; as it is if it begins with no time.
std::string WithTime(const std::string& line) {
    int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0, length = 0;
    if (std::sscanf(line.c_str(), "%2d.%2d.%4d %2d:%2d:%2d%n", &day, &month, &year, &hour, &minute, &second, &length) <
        6) {
        return line;
    }
    return Lum::TimeStamp(year, month, day, hour, minute, second, 0).ToW3DTF() + line.substr(length);
}

// Words that look like links lose what nobody else may read.
std::string WithoutSecrets(const std::string& line, const std::vector<std::string_view>& keys) {
    std::string result;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find(' ', begin), line.size());
        const std::string word = line.substr(begin, end - begin);
        result += (begin > 0 ? " " : "") + (word.find("://") != std::string::npos ? Lum::Redacted(word, keys) : word);
        begin = end + 1;
    }
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> keys(argv + std::min(argc, 2), argv + argc);
    int bad = 0;
    Lum::LossyConverter converter(argc > 1 ? argv[1] : "utf-8", "utf-8", [&bad](const Lum::BadElement&) {
        ++bad;
        return std::u16string(u"\uFFFD");
    });
    const auto flush = [&](std::string& text) {
        std::size_t begin = 0;
        for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
            std::cout << WithoutSecrets(WithTime(text.substr(begin, end - begin)), keys) << '\n';
        }
        text.erase(0, begin);
    };
    std::array<char, 256> block, output;
    std::string input, text;
    Lum::ConversionResult result{};
    while (std::cin.read(block.data(), block.size()), std::cin.gcount() > 0) {
        input.append(block.data(), static_cast<std::size_t>(std::cin.gcount()));
        do {
            result = converter.Convert(input, output);
            text.append(output.data(), result.written);
            input.erase(0, result.read);
        } while (result.status == Lum::ConversionStatus::kOutputFull);
        flush(text);
    }
    do {
        result = converter.Finish(input, output);
        text.append(output.data(), result.written);
        input.erase(0, result.read);
    } while (result.status == Lum::ConversionStatus::kOutputFull);
    if (!text.empty()) {
        flush(text += '\n');
    }
    std::cout << bad << " bad\n";
}
