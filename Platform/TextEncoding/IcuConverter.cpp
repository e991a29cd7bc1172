// Converts with ICU, and stops exactly where the services say that a converter stops.
//
// ICU alone does not: at the end of a block it consumes half of an element, at the end of the output it
// divides a character, and it writes a shift sequence before it knows whether the next character fits. So
// ICU writes to the caller's output only while much space is left there. Otherwise it writes to a buffer of
// our own, the pending units, together with the position of each unit's character in the input. From there,
// whole characters are copied to the output. What does not fit stays pending for the next call. That call
// gets the unreported bytes again and skips those that ICU has already consumed.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>

#include "Platform/TextEncoding/IcuDirections.h"
#include "Platform/TextEncoding/TableConverter.h"
#include "Platform/TextEncoding/Utf7Positions.h"

using namespace Lum::Internal;

namespace Lum::Internal::TextConversion {

namespace {

/// Whether the meaning of bytes depends on bytes before their character.
bool HasState(UConverterType type) {
    constexpr UConverterType kStateless[] = {UCNV_SBCS, UCNV_DBCS, UCNV_MBCS, UCNV_UTF32_BigEndian,
                                             UCNV_UTF32_LittleEndian};
    return std::find(std::begin(kStateless), std::end(kStateless), type) == std::end(kStateless);
}

template <class Direction>
class IcuConverter final : public Converter {
public:
    explicit IcuConverter(IcuHandle handle) noexcept
        : m_Handle(std::move(handle)),
          m_HasState(HasState(ucnv_getType(m_Handle.get()))),
          m_IsUtf7(ucnv_getType(m_Handle.get()) == UCNV_UTF7),
          m_Longest(m_HasState ? Direction::kLongest : Direction::LongestWithoutState(m_Handle.get())) {}

    Step Convert(Input input, Output output) override;
    Step Flush(Output output) override;
    void Clear() override {
        Direction::Reset(m_Handle.get());
        m_Consumed = m_Reported = m_Reportable = 0;
        m_Fault = noErr;
        m_PendingBegin = m_PendingReady = m_PendingEnd = 0;
        m_Utf7Positions = {};
    }

private:
    using From = typename Direction::From;
    using To = typename Direction::To;
    using Run = typename Direction::Run;
    using Units = std::span<const From>;

    struct Call {
        Input input;
        Output output;
        std::size_t read = 0;
        std::size_t written = 0;

        [[nodiscard]] Output Space() const { return output.subspan(written); }
        [[nodiscard]] Step Stop(OSStatus status) const { return {status, read, written}; }
    };

    Input Unconsumed(const Call& call) const;
    bool WritePending(Call& call);
    void ReportUpTo(Call& call, std::uint64_t position);
    Step StopAtFault(const Call& call);
    void ConvertToOutput(Call& call, Units units);
    void ConvertToPending(Units units);
    UErrorCode AppendToPending(Units units, bool isEnd);
    void SetUtf7Positions(Units bytes, std::uint64_t position, std::size_t unit);
    void SetReportable(UErrorCode error);
    void DropUnpaired();

    IcuHandle m_Handle;
    bool m_HasState;
    /// In UTF-7, ICU accepts unpaired surrogates, and positions are found without ICU.
    bool m_IsUtf7;
    /// The most units that a character becomes.
    std::size_t m_Longest;
    // Positions in the text, counted in units of the input since it began.
    /// The end of what ICU has consumed.
    std::uint64_t m_Consumed = 0;
    /// The end of what has been reported to the caller as read.
    std::uint64_t m_Reported = 0;
    /// The end of what can be reported as soon as nothing is pending.
    std::uint64_t m_Reportable = 0;
    /// The status of the element at m_Reportable, if ICU has found it to be bad.
    OSStatus m_Fault = noErr;
    // The output of input that is not yet reported, from m_PendingBegin to m_PendingEnd, and for each unit the
    // position of its character. The units before m_PendingReady are whole characters.
    static constexpr std::size_t kPendingCapacity = (kPiece + 2) * Direction::kLongest;
    std::array<To, kPendingCapacity> m_Pending;
    std::array<std::uint64_t, kPendingCapacity> m_PendingPositions;
    std::size_t m_PendingBegin = 0;
    std::size_t m_PendingReady = 0;
    std::size_t m_PendingEnd = 0;
    Utf7Positions m_Utf7Positions;
};

template <class Direction>
Step IcuConverter<Direction>::Convert(Input input, Output output) {
    Call call{input, output};
    for (;;) {
        if (!WritePending(call)) {
            return call.Stop(kTECOutputBufferFullStatus);
        }
        if (m_Fault != noErr) {
            return StopAtFault(call);
        }
        std::array<From, kPiece> copies;
        const Units units = Direction::WithoutHalfPair(Direction::Units(Unconsumed(call), copies));
        if (units.empty()) {
            return call.Stop(call.read == call.input.size() ? noErr : kTECPartialCharErr);
        }
        // Near the end of the output, ICU might divide a character.
        const std::size_t needed = 2 * m_Longest * sizeof(To) + 16;
        const bool isAligned = reinterpret_cast<std::uintptr_t>(call.Space().data()) % alignof(To) == 0;
        if (isAligned && call.Space().size() >= needed && !m_IsUtf7) {
            ConvertToOutput(call, units);
        } else {
            // Not much more input than can fit the output.
            ConvertToPending(units.first(std::min(units.size(), Direction::PieceFor(call.Space().size()))));
        }
    }
}

template <class Direction>
Step IcuConverter<Direction>::Flush(Output output) {
    // Nothing is consumed yet if an earlier flush did not fit the output, and if the text is empty, which needs
    // no header either.
    if (m_Consumed != 0) {
        m_PendingBegin = m_PendingReady = m_PendingEnd = 0;
        const Units ending = Direction::Ending(m_Handle.get());
        AppendToPending(ending, true);
        const std::size_t size = m_PendingEnd - ending.size();
        Clear();
        m_PendingReady = m_PendingEnd = size;
        std::fill_n(m_PendingPositions.begin(), size, 0);
    }
    Call call{{}, output};
    return WritePending(call) ? call.Stop(noErr) : call.Stop(kTECOutputBufferFullStatus);
}

/// The input that ICU has not consumed.
template <class Direction>
Input IcuConverter<Direction>::Unconsumed(const Call& call) const {
    const Input unread = call.input.subspan(call.read);
    const std::uint64_t skipped = (m_Consumed - m_Reported) * sizeof(From);
    return unread.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(skipped, unread.size())));
}

template <class Direction>
void IcuConverter<Direction>::ReportUpTo(Call& call, std::uint64_t position) {
    if (position > m_Reported) {
        // Never more than the caller has passed, which may be less than in the call before.
        const std::uint64_t size = (position - m_Reported) * sizeof(From);
        call.read += static_cast<std::size_t>(std::min<std::uint64_t>(size, call.input.size() - call.read));
        m_Reported = position;
    }
}

/// Writes the pending characters that fit. Returns whether all of them did.
template <class Direction>
bool IcuConverter<Direction>::WritePending(Call& call) {
    const bool fitsAll = call.Space().size() >= (m_PendingReady - m_PendingBegin) * sizeof(To);
    while (m_PendingBegin != m_PendingReady) {
        std::size_t next = fitsAll ? m_PendingReady : m_PendingBegin + 1;
        while (next != m_PendingReady && m_PendingPositions[next] == m_PendingPositions[m_PendingBegin]) {
            ++next;
        }
        const std::size_t size = (next - m_PendingBegin) * sizeof(To);
        if (call.Space().size() < size) {
            // Shift sequences before the character count as read, in whatever pieces ICU got them.
            ReportUpTo(call, m_PendingPositions[m_PendingBegin]);
            return false;
        }
        std::memcpy(call.Space().data(), &m_Pending[m_PendingBegin], size);
        call.written += size;
        m_PendingBegin = next;
        ReportUpTo(call, next == m_PendingReady ? m_Reportable : m_PendingPositions[next]);
    }
    std::copy(m_Pending.begin() + m_PendingReady, m_Pending.begin() + m_PendingEnd, m_Pending.begin());
    std::copy(m_PendingPositions.begin() + m_PendingReady, m_PendingPositions.begin() + m_PendingEnd,
              m_PendingPositions.begin());
    m_PendingEnd -= m_PendingReady;
    m_PendingBegin = m_PendingReady = 0;
    ReportUpTo(call, m_Reportable);
    return true;
}

template <class Direction>
Step IcuConverter<Direction>::StopAtFault(const Call& call) {
    const OSStatus fault = m_Fault;
    // With a shift state, the bytes after the bad element have no meaning until the caller clears the state.
    if (!m_HasState) {
        Clear();
    }
    return call.Stop(fault);
}

template <class Direction>
void IcuConverter<Direction>::ConvertToOutput(Call& call, Units units) {
    const Output space = call.Space();
    To* const to = reinterpret_cast<To*>(space.data());
    Run run{units.data(), units.data() + units.size(), to,
            to + std::min(space.size() / sizeof(To) - m_Longest, kLargestBlock), nullptr};
    UErrorCode error = U_ZERO_ERROR;
    Direction::Convert(m_Handle.get(), run, false, error);
    const From* const end = run.from;
    if (error == U_BUFFER_OVERFLOW_ERROR) {
        // ICU keeps the rest of the last character, for which space was left.
        run.fromEnd = run.from;
        run.toEnd += m_Longest;
        error = U_ZERO_ERROR;
        Direction::Convert(m_Handle.get(), run, false, error);
    }
    m_Consumed += static_cast<std::uint64_t>(end - units.data());
    call.written += static_cast<std::size_t>(run.to - to) * sizeof(To);
    SetReportable(error);
}

template <class Direction>
void IcuConverter<Direction>::ConvertToPending(Units units) {
    units = Direction::WithoutHalfPair(units);
    const Units piece = m_IsUtf7 ? Direction::Utf7Piece(units) : units;
    if (piece.empty()) {
        m_Fault = kTextMalformedInputErr;
        return;
    }
    const std::uint64_t begin = m_Consumed;
    const std::size_t firstNew = m_PendingEnd;
    SetReportable(AppendToPending(piece, false));
    m_PendingReady = m_PendingEnd;
    if constexpr (std::is_same_v<To, char16_t>) {
        if (m_IsUtf7) {
            auto taken = static_cast<std::size_t>(m_Consumed - begin);
            // ICU has consumed the bad byte too, if the byte itself is bad and not the bits before it.
            if (m_Fault != noErr && taken != 0 && !Utf7Positions::IsBase64(piece[taken - 1])) {
                --taken;
            }
            SetUtf7Positions(piece.first(taken), begin, firstNew);
            DropUnpaired();
        }
    }
}

/// Sets the positions of the pending units from `unit` on, which were made from the bytes at `position`.
template <class Direction>
void IcuConverter<Direction>::SetUtf7Positions(Units bytes, std::uint64_t position, std::size_t unit) {
    for (const From byte : bytes) {
        const auto begin = m_Utf7Positions.Read(static_cast<unsigned char>(byte), position++);
        if (begin && unit != m_PendingEnd) {
            const bool isTrail = unit != 0 && !Direction::BeginsCharacter(&m_Pending[unit], {}, 0);
            m_PendingPositions[unit] = isTrail ? m_PendingPositions[unit - 1] : *begin;
            ++unit;
        }
    }
    m_Reportable = m_Utf7Positions.End();
}

/// Drops the pending units from the first unpaired surrogate on. A lead surrogate at the end stays, but is
/// not ready.
template <class Direction>
void IcuConverter<Direction>::DropUnpaired() {
    std::size_t i = 0;
    while (i != m_PendingEnd && !IsTrailSurrogate(m_Pending[i]) &&
           (!IsLeadSurrogate(m_Pending[i]) || (i + 1 != m_PendingEnd && IsTrailSurrogate(m_Pending[i + 1])))) {
        i += IsLeadSurrogate(m_Pending[i]) ? 2 : 1;
    }
    if (i == m_PendingEnd) {
        return;
    }
    m_Reportable = m_PendingPositions[i];
    m_PendingReady = i;
    if (m_Fault != noErr || IsTrailSurrogate(m_Pending[i]) || i + 1 != m_PendingEnd) {
        m_Fault = kTextMalformedInputErr;
        m_PendingEnd = i;
    }
}

/// Appends the output of `units` to the pending units.
template <class Direction>
UErrorCode IcuConverter<Direction>::AppendToPending(Units units, bool isEnd) {
    const From nothing{};
    const From* const from = units.empty() ? &nothing : units.data();
    std::array<std::int32_t, kPendingCapacity> offsets;
    Run run{from, from + units.size(), m_Pending.data() + m_PendingEnd, m_Pending.data() + m_Pending.size(),
            offsets.data()};
    UErrorCode error = U_ZERO_ERROR;
    Direction::Convert(m_Handle.get(), run, isEnd, error);
    const auto size = static_cast<std::size_t>(run.to - m_Pending.data());
    for (std::size_t i = m_PendingEnd; i < size; ++i) {
        const std::int32_t offset = offsets[i - m_PendingEnd];
        const std::uint64_t position = offset < 0 ? m_Reportable : m_Consumed + static_cast<std::uint64_t>(offset);
        const bool isFirst = i == 0;
        const std::uint64_t before = isFirst ? m_Reportable : m_PendingPositions[i - 1];
        const bool begins = isFirst || Direction::BeginsCharacter(&m_Pending[i], units, offset);
        m_PendingPositions[i] = begins ? std::max(position, before) : before;
    }
    m_PendingEnd = size;
    m_Consumed += static_cast<std::uint64_t>(run.from - from);
    return error;
}

template <class Direction>
void IcuConverter<Direction>::SetReportable(UErrorCode error) {
    m_Fault = StatusOf(error);
    const std::size_t open = m_Fault != noErr ? Direction::FaultSize(m_Handle.get()) : Direction::Held(m_Handle.get());
    m_Reportable = m_Consumed - std::min<std::uint64_t>(open, m_Consumed);
}

/// ICU looks for its tables once and keeps the result for the life of the process, even if the result is that
/// memory has run out. So ICU is made to look for them when the library is loaded, before any text.
UErrorCode LoadTables() {
    static const UErrorCode result = [] {
        UErrorCode error = U_ZERO_ERROR;
        ucnv_countAliases("utf-7", &error);
        return error;
    }();
    return result;
}
[[maybe_unused]] const UErrorCode s_loaded = LoadTables();

template <class Direction>
std::unique_ptr<Converter> Make(std::string_view name) {
    UErrorCode error = Checked(LoadTables());
    IcuHandle handle(ucnv_open(std::string(name).c_str(), &error));
    if (U_SUCCESS(error) != 0) {
        Direction::Prepare(handle.get(), error);
    }
    if (U_FAILURE(Checked(error)) != 0) {
        return nullptr;
    }
    return std::make_unique<IcuConverter<Direction>>(std::move(handle));
}

}  // namespace

std::unique_ptr<Converter> MakeIcuToUtf16(std::string_view name) { return MakeTableToUtf16(name, Make<IcuToUtf16>); }
std::unique_ptr<Converter> MakeIcuFromUtf16(std::string_view name) {
    return MakeTableFromUtf16(name, Make<IcuFromUtf16>);
}

}  // namespace Lum::Internal::TextConversion
