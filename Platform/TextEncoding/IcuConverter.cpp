// Converts with ICU, and stops where the services stop.
//
// ICU takes and writes more than may be reported: it swallows half an element at a block's end, divides
// a character at the end of the room, and sends a shift sequence ahead of its character. So the last
// stretch of room is never given to it. What belongs there is made in a buffer of our own, with the
// place in the text of each character, and handed out by whole characters. What is left is owed to the
// next call, which skips as much of its input as ICU has already taken.
#include "Platform/TextEncoding/IcuConverter.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>

#include "Platform/TextEncoding/IcuDirections.h"
#include "Platform/TextEncoding/SingleByte.h"

namespace TextConversion {

namespace {

/// Whether what bytes mean depends on those before their character.
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

    Progress Convert(Input input, Output output) override;
    Progress Flush(Output output) override;
    void Clear() override {
        Direction::Reset(m_Handle.get());
        m_Seen = m_Told = m_End = 0;
        m_Fault = noErr;
        m_OwedFirst = m_OwedReady = m_OwedSize = 0;
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

        [[nodiscard]] Output Room() const { return output.subspan(written); }
        [[nodiscard]] Progress Stop(OSStatus status) const { return {status, read, written}; }
    };

    Input Unseen(const Call& call) const;
    bool HandOut(Call& call);
    void ReadUpTo(Call& call, std::uint64_t place);
    Progress StopAtFault(const Call& call);
    Progress StopAtEnd(Call& call);
    void ConvertInPlace(Call& call, Units units);
    void ConvertToOwed(Units units);
    UErrorCode RunToOwed(Units units, bool isEnd);
    void SetEnd(UErrorCode error);
    void StopBeforeUnpaired();

    IcuHandle m_Handle;
    bool m_HasState;
    /// ICU lets unpaired surrogates pass there.
    bool m_IsUtf7;
    /// The most units that a character becomes.
    std::size_t m_Longest;
    /// Places in the text, in units of the input: how far it has been given to ICU, how far it has been
    /// reported as read, and how far it may be reported once nothing is owed.
    std::uint64_t m_Seen = 0;
    std::uint64_t m_Told = 0;
    std::uint64_t m_End = 0;
    /// What is wrong at m_End.
    OSStatus m_Fault = noErr;
    /// What has been made of input not yet reported, and the place of each unit's character. Up to
    /// m_OwedReady these are whole characters.
    static constexpr std::size_t kOwedRoom = (kPiece + 2) * Direction::kLongest;
    std::array<To, kOwedRoom> m_Owed;
    std::array<std::uint64_t, kOwedRoom> m_OwedPlaces;
    std::size_t m_OwedFirst = 0;
    std::size_t m_OwedReady = 0;
    std::size_t m_OwedSize = 0;
};

template <class Direction>
Progress IcuConverter<Direction>::Convert(Input input, Output output) {
    Call call{input, output};
    for (;;) {
        if (!HandOut(call)) {
            return call.Stop(kTECOutputBufferFullStatus);
        }
        if (m_Fault != noErr) {
            return StopAtFault(call);
        }
        std::array<From, kPiece> copies;
        const Units units = Direction::WithoutHalfPair(Direction::Units(Unseen(call), copies));
        if (units.empty()) {
            return StopAtEnd(call);
        }
        // Near the end of the room ICU might divide a character.
        const std::size_t worthwhile = 2 * m_Longest * sizeof(To) + 16;
        const bool isAligned = reinterpret_cast<std::uintptr_t>(call.Room().data()) % alignof(To) == 0;
        if (isAligned && call.Room().size() >= worthwhile && !m_IsUtf7) {
            ConvertInPlace(call, units);
        } else {
            // No more than can be there beside the first that does not fit.
            ConvertToOwed(units.first(std::min(units.size(), Direction::PieceFor(call.Room().size()))));
        }
    }
}

template <class Direction>
Progress IcuConverter<Direction>::Flush(Output output) {
    // Nothing has been seen after a flush that ran out of room, and of a text that is empty, which needs
    // no header either.
    if (m_Seen != 0) {
        m_OwedFirst = m_OwedReady = m_OwedSize = 0;
        const Units ending = Direction::Ending(m_Handle.get());
        RunToOwed(ending, true);
        const std::size_t size = m_OwedSize - ending.size();
        Clear();
        m_OwedReady = m_OwedSize = size;
        std::fill_n(m_OwedPlaces.begin(), size, 0);
    }
    Call call{{}, output};
    return HandOut(call) ? call.Stop(noErr) : call.Stop(kTECOutputBufferFullStatus);
}

/// What of the input has not been given to ICU.
template <class Direction>
Input IcuConverter<Direction>::Unseen(const Call& call) const {
    const Input unread = call.input.subspan(call.read);
    const std::uint64_t taken = (m_Seen - m_Told) * sizeof(From);
    return unread.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(taken, unread.size())));
}

template <class Direction>
void IcuConverter<Direction>::ReadUpTo(Call& call, std::uint64_t place) {
    if (place > m_Told) {
        // A caller who passes less than before is not told that all was read.
        const std::uint64_t size = (place - m_Told) * sizeof(From);
        call.read += static_cast<std::size_t>(std::min<std::uint64_t>(size, call.input.size() - call.read));
        m_Told = place;
    }
}

/// Writes the owed characters that fit; whether that were all.
template <class Direction>
bool IcuConverter<Direction>::HandOut(Call& call) {
    const bool fitsAll = call.Room().size() >= (m_OwedReady - m_OwedFirst) * sizeof(To);
    while (m_OwedFirst != m_OwedReady) {
        std::size_t next = fitsAll ? m_OwedReady : m_OwedFirst + 1;
        while (next != m_OwedReady && m_OwedPlaces[next] == m_OwedPlaces[m_OwedFirst]) {
            ++next;
        }
        const std::size_t size = (next - m_OwedFirst) * sizeof(To);
        if (call.Room().size() < size) {
            return false;
        }
        std::memcpy(call.Room().data(), &m_Owed[m_OwedFirst], size);
        call.written += size;
        m_OwedFirst = next;
        ReadUpTo(call, next == m_OwedReady ? m_End : m_OwedPlaces[next]);
    }
    std::copy(m_Owed.begin() + m_OwedReady, m_Owed.begin() + m_OwedSize, m_Owed.begin());
    std::copy(m_OwedPlaces.begin() + m_OwedReady, m_OwedPlaces.begin() + m_OwedSize, m_OwedPlaces.begin());
    m_OwedSize -= m_OwedReady;
    m_OwedFirst = m_OwedReady = 0;
    ReadUpTo(call, m_End);
    return true;
}

template <class Direction>
Progress IcuConverter<Direction>::StopAtFault(const Call& call) {
    const OSStatus fault = m_Fault;
    // With a state, only clearing tells what the bytes behind the bad element mean.
    if (!m_HasState) {
        Clear();
    }
    return call.Stop(fault);
}

template <class Direction>
Progress IcuConverter<Direction>::StopAtEnd(Call& call) {
    if (call.read != call.input.size() && m_OwedSize == 0 && Direction::MayEnd(m_Handle.get())) {
        ReadUpTo(call, m_Seen);
    }
    return call.Stop(call.read == call.input.size() ? noErr : kTECPartialCharErr);
}

template <class Direction>
void IcuConverter<Direction>::ConvertInPlace(Call& call, Units units) {
    const Output room = call.Room();
    To* const to = reinterpret_cast<To*>(room.data());
    Run run{units.data(), units.data() + units.size(), to,
            to + std::min(room.size() / sizeof(To) - m_Longest, kLargestBlock), nullptr};
    UErrorCode error = U_ZERO_ERROR;
    Direction::Convert(m_Handle.get(), run, false, error);
    const From* const end = run.from;
    if (error == U_BUFFER_OVERFLOW_ERROR) {
        // The rest of the last character.
        run.fromEnd = run.from;
        run.toEnd += m_Longest;
        error = U_ZERO_ERROR;
        Direction::Convert(m_Handle.get(), run, false, error);
    }
    m_Seen += static_cast<std::uint64_t>(end - units.data());
    call.written += static_cast<std::size_t>(run.to - to) * sizeof(To);
    SetEnd(error);
}

template <class Direction>
void IcuConverter<Direction>::ConvertToOwed(Units units) {
    units = Direction::WithoutHalfPair(units);
    const Units piece = m_IsUtf7 ? Direction::Utf7Piece(units) : units;
    if (piece.empty()) {
        m_Fault = kTextMalformedInputErr;
        return;
    }
    SetEnd(RunToOwed(piece, false));
    m_OwedReady = m_OwedSize;
    if constexpr (std::is_same_v<To, char16_t>) {
        if (m_IsUtf7) {
            StopBeforeUnpaired();
        }
    }
}

/// Takes back what is owed from an unpaired surrogate on. The half of a pair at the end stays, but is
/// not ready.
template <class Direction>
void IcuConverter<Direction>::StopBeforeUnpaired() {
    std::size_t i = 0;
    while (i != m_OwedSize && !IsTrailSurrogate(m_Owed[i]) &&
           (!IsLeadSurrogate(m_Owed[i]) || (i + 1 != m_OwedSize && IsTrailSurrogate(m_Owed[i + 1])))) {
        i += IsLeadSurrogate(m_Owed[i]) ? 2 : 1;
    }
    if (i == m_OwedSize) {
        return;
    }
    m_End = m_OwedPlaces[i];
    m_OwedReady = i;
    if (m_Fault != noErr || IsTrailSurrogate(m_Owed[i]) || i + 1 != m_OwedSize) {
        m_Fault = kTextMalformedInputErr;
        m_OwedSize = i;
    }
}

/// Appends to what is owed.
template <class Direction>
UErrorCode IcuConverter<Direction>::RunToOwed(Units units, bool isEnd) {
    const From nothing{};
    const From* const from = units.empty() ? &nothing : units.data();
    std::array<std::int32_t, kOwedRoom> offsets;
    Run run{from, from + units.size(), m_Owed.data() + m_OwedSize, m_Owed.data() + m_Owed.size(), offsets.data()};
    UErrorCode error = U_ZERO_ERROR;
    Direction::Convert(m_Handle.get(), run, isEnd, error);
    const auto size = static_cast<std::size_t>(run.to - m_Owed.data());
    for (std::size_t i = m_OwedSize; i < size; ++i) {
        const std::int32_t offset = offsets[i - m_OwedSize];
        const std::uint64_t place = offset < 0 ? m_End : m_Seen + static_cast<std::uint64_t>(offset);
        const bool isFirst = i == 0;
        const std::uint64_t before = isFirst ? m_End : m_OwedPlaces[i - 1];
        const bool begins = isFirst || Direction::BeginsCharacter(&m_Owed[i], units, offset);
        m_OwedPlaces[i] = begins ? std::max(place, before) : before;
    }
    m_OwedSize = size;
    m_Seen += static_cast<std::uint64_t>(run.from - from);
    return error;
}

template <class Direction>
void IcuConverter<Direction>::SetEnd(UErrorCode error) {
    m_Fault = StatusOf(error);
    const std::size_t open = m_Fault != noErr ? Direction::FaultSize(m_Handle.get()) : Direction::Held(m_Handle.get());
    m_End = m_Seen - std::min<std::uint64_t>(open, m_Seen);
}

template <class Direction>
std::unique_ptr<Converter> Make(std::string_view name) {
    UErrorCode error = U_ZERO_ERROR;
    IcuHandle handle(ucnv_open(std::string(name).c_str(), &error));
    if (U_SUCCESS(error) != 0) {
        Direction::Prepare(handle.get(), error);
    }
    if (U_FAILURE(error) != 0) {
        return nullptr;
    }
    if constexpr (std::is_same_v<Direction, IcuToUtf16>) {
        if (ucnv_getType(handle.get()) == UCNV_SBCS || ucnv_getMaxCharSize(handle.get()) == 1) {
            if (auto singleByte = MakeSingleByteToUtf16(handle.get())) {
                return singleByte;
            }
        }
    }
    return std::make_unique<IcuConverter<Direction>>(std::move(handle));
}

}  // namespace

std::unique_ptr<Converter> MakeIcuToUtf16(std::string_view name) { return Make<IcuToUtf16>(name); }
std::unique_ptr<Converter> MakeIcuFromUtf16(std::string_view name) { return Make<IcuFromUtf16>(name); }

}  // namespace TextConversion
