// lum time: a date and time as text, as a count of ticks and as calendar fields.
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <Lum/TimeStamp.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Display.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Output.h"

namespace Tool {
namespace {

/// Reads a text from its front; every operation says whether it found what it looked for.
class Reader {
public:
    explicit Reader(std::string_view text) : m_Rest(text) {}

    [[nodiscard]] bool IsAtEnd() const { return m_Rest.empty(); }
    bool Take(char c) {
        const bool isThere = m_Rest.starts_with(c);
        m_Rest.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }
    /// A number of so many digits, within bounds.
    bool Take(std::size_t digits, int low, int high, int& number) {
        const std::string_view text = Digits();
        if (text.size() != digits) {
            return false;
        }
        std::from_chars(text.data(), text.data() + text.size(), number);
        m_Rest.remove_prefix(digits);
        return number >= low && number <= high;
    }
    /// The digits behind a second's point, in ticks, rounded half up.
    bool TakeFraction(std::int64_t& ticks) {
        const std::string_view digits = Digits();
        m_Rest.remove_prefix(digits.size());
        std::int64_t unit = Lum::TimeStamp::kTicksPerSecond;
        for (const char c : digits.substr(0, 7)) {
            unit /= 10;
            ticks += unit * (c - '0');
        }
        ticks += digits.size() > 7 && digits[7] >= '5' ? 1 : 0;
        return !digits.empty();
    }

private:
    [[nodiscard]] std::string_view Digits() const { return m_Rest.substr(0, m_Rest.find_first_not_of("0123456789")); }

    std::string_view m_Rest;
};

/// The time of a text such as "2008-02-29", "2008-02-29T12:30", "2008-02-29T12:30:45.5Z" or
/// "2008-02-29T12:30:45+02:00"; nothing where it is none, or before 1601.
std::optional<Lum::TimeStamp> ReadTime(std::string_view text) {
    Reader reader(text);
    int year = 0;
    int month = 0;
    int day = 0;
    if (!(reader.Take(4, 1601, 9999, year) && reader.Take('-') && reader.Take(2, 1, 12, month) && reader.Take('-') &&
          reader.Take(2, 1, 31, day)) ||
        !(std::chrono::year(year) / month / day).ok()) {
        return std::nullopt;
    }
    int hour = 0;
    int minute = 0;
    int second = 0;
    std::int64_t ticks = 0;
    int zoneHour = 0;
    int zoneMinute = 0;
    int sign = 0;
    if (reader.Take('T')) {
        if (!(reader.Take(2, 0, 23, hour) && reader.Take(':') && reader.Take(2, 0, 59, minute)) ||
            (reader.Take(':') &&
             (!reader.Take(2, 0, 59, second) || (reader.Take('.') && !reader.TakeFraction(ticks))))) {
            return std::nullopt;
        }
        sign = reader.Take('+') ? -1 : reader.Take('-') ? 1 : 0;
        if (sign == 0 ? !reader.Take('Z') && !reader.IsAtEnd()
                      : !(reader.Take(2, 0, 23, zoneHour) && reader.Take(':') && reader.Take(2, 0, 59, zoneMinute))) {
            return std::nullopt;
        }
    }
    const Lum::TimeStamp time(year, month, day, hour + sign * zoneHour, minute + sign * zoneMinute, second, 0);
    return reader.IsAtEnd() && time.GetTicks() >= 0 ? std::optional(Lum::TimeStamp::FromTicks(time.GetTicks() + ticks))
                                                    : std::nullopt;
}

std::optional<Lum::TimeStamp> ReadTicks(std::string_view text) {
    std::int64_t ticks = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), ticks);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(Lum::TimeStamp::FromTicks(ticks))
                                                                    : std::nullopt;
}

/// A field's name and its number.
struct Field {
    const char* name;
    std::int64_t value;
};

std::array<Field, 7> Fields(Lum::TimeStamp time) {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    unsigned int fraction = 0;
    time.ToYMDHMSF(year, month, day, hour, minute, second, fraction);
    return {{{"year", year},
             {"month", month},
             {"day", day},
             {"hour", hour},
             {"minute", minute},
             {"second", second},
             {"fraction", fraction}}};
}

void ShowAsJson(std::string_view input, const std::optional<Lum::TimeStamp>& time) {
    nlohmann::ordered_json object{{"input", input}, {"valid", time.has_value()}};
    if (time) {
        object["text"] = time->ToW3DTF();
        object["ticks"] = time->GetTicks();
        for (const auto& [name, value] : Fields(*time)) {
            object[name] = value;
        }
    }
    WriteJson(object);
}

void ShowAsTable(std::string_view input, const std::optional<Lum::TimeStamp>& time) {
    std::string table = Printable(input) + '\n';
    if (time) {
        table += Row("text", time->ToW3DTF()) + Row("ticks", std::to_string(time->GetTicks()));
        for (const auto& [name, value] : Fields(*time)) {
            table += Row(name, std::to_string(value));
        }
    } else {
        table += Row("not valid", "");
    }
    WriteText(table);
}

}  // namespace

void AddTime(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("time", "Show the present or given times as text, ticks and fields");
    struct Options {
        bool json = false;
        bool ticks = false;
        std::vector<std::string> times;
    };
    const auto options = std::make_shared<Options>();
    command->add_flag("--json", options->json, "Print one JSON object a line");
    command->add_flag("--ticks", options->ticks, "The times are counts of 100 ns from 1601-01-01");
    AddTexts(*command, "TIME", options->times, "Times as 2008-02-29T12:30:45.5; without any, the present one");
    command->callback([options, &status] {
        const auto show = options->json ? ShowAsJson : ShowAsTable;
        if (options->times.empty()) {
            Lum::TimeStamp now;
            now.SetToCurrentTime();
            show("now", now);
        }
        for (const std::string& text : options->times) {
            const auto time = options->ticks ? ReadTicks(text) : ReadTime(text);
            status |= time ? 0 : 1;
            show(text, time);
        }
    });
}

}  // namespace Tool
