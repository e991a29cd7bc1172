// A family of cases: what it adds to the command line, which cases it has and which goals they have
// to meet. Families add themselves, so that the program's frame knows none of them.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace Bench {

/// The subject that every other one is compared with.
inline constexpr const char* kMeasured = "Lum";
/// The subject that does the least that the result can cost; it is no peer.
inline constexpr const char* kFloor = "Floor";
/// In the place of a subject: the fastest of the peers.
inline constexpr const char* kBestPeer = "the best peer";
/// In the place of a subject: the bound is a number of its own.
inline constexpr const char* kNobody = "";

enum class Quantity { Time, Allocations };

/// What the measured subject's figure has to keep below: `most` times that of subject `of`, in the
/// same case or in the one that `ofCase` names.
struct Goal {
    std::string caseName;  ///< "family/case"
    double most;
    std::string of;
    Quantity quantity = Quantity::Time;
    std::string ofCase = {};  ///< "family/case", or empty for `caseName`.
};

struct Family {
    std::string name;
    std::function<void(CLI::App&)> addOptions;
    /// Called once, when the options have been read; throws std::runtime_error if the inputs they
    /// name cannot be had.
    std::function<void()> addCases;
    std::vector<Goal> goals;
    /// What a reader of the table has to know about the inputs. Asked after addCases.
    std::function<std::vector<std::string>()> notes;
};

inline std::vector<Family>& Families() {
    static std::vector<Family> families;
    return families;
}

/// Adds a family from a file of its own, ahead of main.
struct AddFamily {
    explicit AddFamily(Family family) { Families().push_back(std::move(family)); }
};

}  // namespace Bench
