// The table, and the loop over it.
#include "Platform/TextEncoding/SingleByte.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace TextConversion {

namespace {

constexpr char16_t kNoUnit = 0xFFFF;

struct SingleByteTable {
    /// kNoUnit where `fault` tells what is wrong with the byte.
    std::array<char16_t, 256> unit;
    std::array<std::int16_t, 256> fault;
};

class SingleByteToUtf16 final : public Converter {
public:
    explicit SingleByteToUtf16(const SingleByteTable& table) noexcept : m_Table(table) {}

    Progress Convert(Input input, Output output) override {
        const std::size_t most = std::min(input.size(), output.size() / sizeof(char16_t));
        for (std::size_t i = 0; i != most; ++i) {
            const char16_t unit = m_Table.unit[input[i]];
            if (unit == kNoUnit) {
                return Stop(i, input);
            }
            StoreUnit(output.data() + sizeof(char16_t) * i, unit);
        }
        return Stop(most, input);
    }
    Progress Flush(Output /*output*/) override { return {noErr, 0, 0}; }
    void Clear() override {}

private:
    [[nodiscard]] Progress Stop(std::size_t read, Input input) const {
        const OSStatus status = read == input.size()                   ? noErr
                                : m_Table.unit[input[read]] == kNoUnit ? m_Table.fault[input[read]]
                                                                       : kTECOutputBufferFullStatus;
        return {status, read, sizeof(char16_t) * read};
    }

    SingleByteTable m_Table;
};

}  // namespace

std::unique_ptr<Converter> MakeSingleByteToUtf16(UConverter* converter) {
    SingleByteTable table;
    for (std::size_t i = 0; i < table.unit.size(); ++i) {
        const auto byte = static_cast<unsigned char>(i);
        std::array<char16_t, IcuToUtf16::kLongest> units;
        IcuToUtf16::Run run{&byte, &byte + 1, units.data(), units.data() + units.size(), nullptr};
        UErrorCode error = U_ZERO_ERROR;
        IcuToUtf16::Reset(converter);
        IcuToUtf16::Convert(converter, run, true, error);
        table.fault[i] = static_cast<std::int16_t>(StatusOf(error));
        table.unit[i] = table.fault[i] == noErr ? units[0] : kNoUnit;
        if (table.fault[i] == noErr && (run.to != units.data() + 1 || units[0] == kNoUnit)) {
            return nullptr;
        }
    }
    return std::make_unique<SingleByteToUtf16>(table);
}

}  // namespace TextConversion
