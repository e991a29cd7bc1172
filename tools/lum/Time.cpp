// lum time: a date and time as text, as a count of ticks and as calendar fields.
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <limits>
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
#include "tools/lum/Lines.h"
#include "tools/lum/Look.h"
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
    bool TakeTwoDigits(int& number) { return TakeNumber(2, 2, number); }
    /// Four digits, or as many more as the year needs.
    bool TakeYear(int& year) { return TakeNumber(4, m_Rest.starts_with('0') ? 4 : 9, year); }
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
    bool TakeNumber(std::size_t fewest, std::size_t most, int& number) {
        const std::string_view digits = Digits();
        if (digits.size() < fewest || digits.size() > most) {
            return false;
        }
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
        m_Rest.remove_prefix(digits.size());
        return true;
    }
    [[nodiscard]] std::string_view Digits() const { return m_Rest.substr(0, m_Rest.find_first_not_of("0123456789")); }

    std::string_view m_Rest;
};

/// What a text says, within no bounds yet.
struct Parts {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    std::int64_t ticks = 0;
    int sign = 0;
    int zoneHour = 0;
    int zoneMinute = 0;
};

/// Splits a text such as "2008-02-29", "2008-02-29T12:30", "2008-02-29T12:30:45.5Z" or
/// "2008-02-29T12:30:45+02:00"; nothing where it is none.
std::optional<Parts> Split(std::string_view text) {
    Reader reader(text);
    Parts parts;
    if (!(reader.TakeYear(parts.year) && reader.Take('-') && reader.TakeTwoDigits(parts.month) && reader.Take('-') &&
          reader.TakeTwoDigits(parts.day))) {
        return std::nullopt;
    }
    if (reader.Take('T')) {
        if (!(reader.TakeTwoDigits(parts.hour) && reader.Take(':') && reader.TakeTwoDigits(parts.minute)) ||
            (reader.Take(':') &&
             (!reader.TakeTwoDigits(parts.second) || (reader.Take('.') && !reader.TakeFraction(parts.ticks))))) {
            return std::nullopt;
        }
        parts.sign = reader.Take('+') ? 1 : reader.Take('-') ? -1 : 0;
        if (parts.sign == 0 ? !reader.Take('Z') && !reader.IsAtEnd()
                            : !(reader.TakeTwoDigits(parts.zoneHour) && reader.Take(':') &&
                                reader.TakeTwoDigits(parts.zoneMinute))) {
            return std::nullopt;
        }
    }
    return reader.IsAtEnd() ? std::optional(parts) : std::nullopt;
}

/// A time, or why there is none.
struct Reading {
    Lum::TimeStamp time;
    const char* problem = nullptr;
};

/// The time of a text, of all that have a calendar date.
Reading ReadTime(std::string_view text) {
    constexpr std::int64_t maxTicks = std::numeric_limits<std::int64_t>::max();
    constexpr int maxYear = 30828;
    const std::optional<Parts> parts = Split(text);
    if (!parts) {
        return {{}, "not a time: expected YYYY-MM-DD[Thh:mm[:ss[.f]][Z|+hh:mm|-hh:mm]]"};
    }
    const auto& [year, month, day, hour, minute, second, ticks, sign, zoneHour, zoneMinute] = *parts;
    // std::chrono has no years from 32768 on; the years beyond the last are handled below.
    const auto date = std::chrono::year(year > maxYear ? maxYear : year) / month / day;
    if (!date.ok()) {
        return {{}, "not a date that exists"};
    }
    if (hour > 23 || minute > 59 || second > 59) {
        return {{}, "not a time of day: 00:00:00 to 23:59:59"};
    }
    if (zoneHour > 23 || zoneMinute > 59) {
        return {{}, "not an offset: 00:00 to 23:59"};
    }
    const std::chrono::sys_seconds time = std::chrono::sys_days(date) + std::chrono::hours(hour - sign * zoneHour) +
                                          std::chrono::minutes(minute - sign * zoneMinute) +
                                          std::chrono::seconds(second);
    const std::int64_t seconds =
        time.time_since_epoch().count() + Lum::TimeStamp::kTicksTo1970 / Lum::TimeStamp::kTicksPerSecond;
    if (seconds < 0) {
        return {{}, "before 1601-01-01T00:00:00Z"};
    }
    if (year > maxYear || seconds > (maxTicks - ticks) / Lum::TimeStamp::kTicksPerSecond) {
        return {{}, "after 30828-09-14T02:48:05.4775807Z"};
    }
    return {Lum::TimeStamp::FromTicks(seconds * Lum::TimeStamp::kTicksPerSecond + ticks)};
}

Reading ReadTicks(std::string_view text) {
    std::int64_t ticks = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), ticks);
    if (error != std::errc() || end != text.data() + text.size()) {
        return {{}, "not a count: expected a number of 64 bits"};
    }
    return {Lum::TimeStamp::FromTicks(ticks)};
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
             {"fraction", static_cast<int>(fraction)}}};  // below 0 in front of 1601, as the others
}

void ShowAsJson(std::string_view input, const Reading& reading) {
    const auto& [time, problem] = reading;
    nlohmann::ordered_json object{{"input", input}, {"valid", problem == nullptr}};
    if (problem == nullptr) {
        object["text"] = time.ToW3DTF();
        object["ticks"] = time.GetTicks();
        for (const auto& [name, value] : Fields(time)) {
            object[name] = value;
        }
    } else {
        object["reason"] = problem;
    }
    WriteJson(object);
}

void ShowAsTable(std::string_view input, const Reading& reading) {
    const auto& [time, problem] = reading;
    std::string table = Subject(input);
    if (problem == nullptr) {
        table += Row("text", time.ToW3DTF()) + Row("ticks", std::to_string(time.GetTicks()));
        for (const auto& [name, value] : Fields(time)) {
            table += Row(name, std::to_string(value));
        }
    } else {
        table += Row("not valid", problem);
    }
    WriteText(table);
}

}  // namespace

void AddTime(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("time", "Show the present or given times as text, ticks and fields");
    struct Options {
        bool json = false;
        std::vector<std::string> ticks;
        std::vector<std::string> times;
    };
    const auto options = std::make_shared<Options>();
    command->add_flag("--json", options->json, "Print one JSON object a line");
    command->add_flag("--ticks", options->ticks, "The times are counts of 100 ns from 1601-01-01");
    AddTexts(*command, "TIME", options->times, "Times as 2008-02-29T12:30:45.5; without any, the present one");
    command->callback([options, &status] {
        const auto show = options->json ? ShowAsJson : ShowAsTable;
        std::vector<std::string> times = options->ticks;
        // What the flag has as its value where none is given.
        std::erase(times, "true");
        times.insert(times.end(), options->times.begin(), options->times.end());
        if (times.empty()) {
            Lum::TimeStamp now;
            now.SetToCurrentTime();
            show("now", {now});
        }
        for (const std::string& text : times) {
            const Reading reading = options->ticks.empty() ? ReadTime(text) : ReadTicks(text);
            status |= reading.problem == nullptr ? 0 : 1;
            show(text, reading);
        }
    });
}

}  // namespace Tool
