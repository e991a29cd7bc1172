// Property: strings that share, lock and edit one another keep what a plain model of them says: the text, the
// reference count, the capacity, the cached host string, and the units that a caller wrote behind the text.
#include <Lum/CString.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <memory>
#include <string>

#include "fuzz/Fuzz.h"

namespace {

struct Buffer {
    std::u16string known{u'\0'};  // The text, its 0, and what was written or cleared behind it.
    std::size_t length = 0;
    int count = 1, capacity = 0;
    bool hasHostString = false;

    void Set(const std::u16string& text) { known = text + u'\0', length = text.size(); }
};

/// What one string is to be, by the simplest form of the rules.
struct Model {
    Buffer* operator->() const { return m_Buffer.get(); }
    [[nodiscard]] bool IsEmptyOne() const { return m_Buffer == EmptyOne(); }
    [[nodiscard]] std::u16string Text() const { return m_Buffer->known.substr(0, m_Buffer->length); }
    [[nodiscard]] int Length() const { return static_cast<int>(m_Buffer->length); }

    void Release() {
        m_Buffer->count += IsEmptyOne() ? 0 : 1;
        m_Buffer = EmptyOne();
    }
    /// For what replaces the text.
    void AllocBeforeWrite(int length) {
        if (m_Buffer->count >= 2 || length > m_Buffer->capacity) {
            Move(length, std::u16string(static_cast<std::size_t>(length), u'\0'));
        }
        m_Buffer->hasHostString = false;
    }
    /// For what changes the text or writes behind it.
    void GetBuffer(int least) {
        if (m_Buffer->count >= 2 || least > m_Buffer->capacity) {
            Move(std::max(least, Length()), Text());
            m_Buffer->known.resize(static_cast<std::size_t>(m_Buffer->capacity) + 1);
        }
    }
    void Assign(const std::u16string& text) {
        AllocBeforeWrite(static_cast<int>(text.size()));
        m_Buffer->Set(text);
    }
    void Edit(const std::u16string& text) {
        GetBuffer(static_cast<int>(text.size()));
        m_Buffer->hasHostString = false;
        m_Buffer->Set(text);
    }
    void AssignString(const Model& other) {
        if (m_Buffer == other.m_Buffer) {
            return;
        }
        if ((m_Buffer->count < 0 && !IsEmptyOne()) || other->count < 0) {
            Assign(other.Text());
        } else {
            Release();
            Share(other);
        }
    }
    void Share(const Model& other) {
        m_Buffer = other.m_Buffer;
        ++m_Buffer->count;
    }
    void ReleaseBuffer(int length) {
        GetBuffer(0);
        m_Buffer->hasHostString = false;
        m_Buffer->length =
            length == -1 ? m_Buffer->known.find(u'\0') : static_cast<std::size_t>(std::min(length, m_Buffer->capacity));
        m_Buffer->known[m_Buffer->length] = 0;
    }
    void Lock() {
        GetBuffer(0);
        m_Buffer->count = -1;
    }
    void FreeExtra() {
        if (Length() != m_Buffer->capacity) {
            Move(Length(), Text());
        }
    }

private:
    static const std::shared_ptr<Buffer>& EmptyOne() {
        static const auto buffer = std::make_shared<Buffer>(Buffer{{u'\0'}, 0, -1});
        return buffer;
    }
    void Move(int length, const std::u16string& text) {
        Release();
        if (length > 0) {
            m_Buffer = std::make_shared<Buffer>();
            const auto block = static_cast<int>(std::bit_ceil(static_cast<unsigned>(length)));
            m_Buffer->capacity = length > 512 ? length : std::max(64, block);
        }
        m_Buffer->Set(text);
    }

    std::shared_ptr<Buffer> m_Buffer = EmptyOne();
};

/// Eight strings, and operations on them that the input chooses.
class Strings {
public:
    explicit Strings(const Choices& choices) : m_Choices(choices) {}

    void Run() {
        while (!m_Choices.IsEmpty()) {
            Pair &pair = m_Pairs[Next(8)], &other = m_Pairs[Next(8)];
            Operate(pair.string, pair.model, other.string, other.model);
            RequireSame(pair);
            RequireSame(other);
        }
    }

private:
    static constexpr std::size_t kLongest = 3000;
    struct Pair {
        CString string;
        Model model;
    };

    std::size_t Next(std::size_t bound) {
        return (bound > 256 ? m_Choices.Take<std::uint16_t>() : m_Choices.Take<std::uint8_t>()) % bound;
    }
    int NextInt(std::size_t bound) { return static_cast<int>(Next(bound)); }
    /// A length, often one that just fits a buffer or just does not.
    int Size() {
        constexpr int fits[] = {0, 63, 64, 65, 128, 256, 512, 513, 600};
        return Next(2) == 0 ? fits[Next(std::size(fits))] : NextInt(700);
    }
    char16_t Unit() { return u"abA \u00A0\xD83D\xDE00,"[Next(8)]; }
    std::u16string Text() {
        std::u16string text(Next(8) == 0 ? Next(700) : Next(9), u'x');
        std::generate(text.begin(), text.end(), [&] { return Unit(); });
        return text;
    }

    void Operate(CString& s, Model& m, CString& other, Model& otherModel) {
        auto text = m.Text();
        // A pointer into the string's own text names what is there up to the first 0.
        const auto from = Next(text.size() + 1);
        const std::u16string own = text.c_str() + from;
        const int index = NextInt(text.size() + 4) - 2;
        const auto at = static_cast<std::size_t>(std::clamp(index, 0, m.Length()));
        const auto unit = Unit();
        switch (Next(17)) {
            case 0:
                s = (text = Text()).c_str();
                return m.Assign(text);
            case 1:
                s = other;
                return m.AssignString(otherModel);
            case 2:
                CopyAndDrop(s, m);
                return;
            case 3:
                if (const auto tail = otherModel.Text(); text.size() + tail.size() < kLongest) {
                    s += other;
                    return tail.empty() ? void() : m.Edit(text + tail);
                }
                return;
            case 4:
                s += unit;
                return m.Edit(text + unit);
            case 5:
                if (text.size() + own.size() < kLongest) {
                    s.Insert(index, s.GetAsUniCharStr() + from);
                    return own.empty() ? void() : m.Edit(text.insert(at, own));
                }
                return;
            case 6: {
                const auto count = Next(12);
                s.Delete(index, static_cast<int>(count));
                return count == 0 || at == text.size() ? void() : m.Edit(text.erase(at, count));
            }
            case 7: {
                const auto wanted = Text(), to = Text();
                int count = 0;
                std::size_t found = wanted.empty() ? text.npos : text.find(wanted);
                for (; found < kLongest; found = text.find(wanted, found + to.size()), ++count) {
                    text.replace(found, wanted.size(), to);
                }
                if (text.size() < kLongest) {
                    Require(s.Replace(wanted.c_str(), to.c_str()) == count);
                    return count == 0 ? void() : m.Edit(text);
                }
                return;
            }
            case 8:
                s.Empty();
                return text.empty() ? void() : m->count >= 0 ? m.Release() : m.Assign(u"");
            case 9:
                s.LockBuffer();
                return m.Lock();
            case 10:
                // Only for one who shares with nobody.
                if (m->count < 2) {
                    s.UnlockBuffer();
                    m->count = m.IsEmptyOne() ? -1 : 1;
                }
                return;
            case 11:
                return WriteThroughTheBuffer(s, m);
            case 12:
                s.FreeExtra();
                return m.FreeExtra();
            case 13: {
                const auto place = static_cast<std::size_t>(std::clamp(index, 0, otherModel.Length()));
                const auto count = Next(700);
                const auto part = otherModel.Text().substr(place, count);
                Model piece;
                index <= 0 && part.size() == otherModel->length && otherModel->count > 0 ? piece.Share(otherModel)
                                                                                         : piece.Assign(part);
                s = other.Mid(index, static_cast<int>(count));
                m.AssignString(piece);
                return piece.Release();
            }
            case 14:
                s = s.GetAsUniCharStr() + from;
                return m.Assign(own);
            case 15:
                s.ReleaseCFStringRef(s.GetCFStringRef(0));
                m->hasHostString = true;
                return;
            default:
                swap(s, other);
                return std::swap(m, otherModel);
        }
    }

    static void CopyAndDrop(const CString& s, Model& m) {
        const CString copy(s);
        m->count += m->count > 0 ? 2 : 0;
    }

    /// As many units as were asked for and the 0, between any of the ways to open and to close the buffer.
    void WriteThroughTheBuffer(CString& s, Model& m) {
        int size = Size();
        const auto way = Next(4);
        if (way == 0) {
            s.AllocBeforeWrite(size);
            m.AllocBeforeWrite(size);
        } else if (way == 1) {
            s.LockBuffer();
            m.Lock();
            size = std::min(size, m->capacity);
        }
        unsigned short* const units = way == 2 ? s.GetBufferSetLength(size) : s.GetBuffer(size);
        m.GetBuffer(size);
        if (!m.IsEmptyOne()) {
            const auto written = std::u16string(static_cast<std::size_t>(size), Unit()) + u'\0';
            std::copy(written.begin(), written.end(), units);
            m->known.replace(0, written.size(), written);
        }
        if (way == 2) {
            m.ReleaseBuffer(size);
        }
        if (Next(4) == 0) {
            CopyAndDrop(s, m);
        } else {
            s.GetBuffer(size);
        }
        for (auto releases = way == 2 ? 2 : Next(2); releases <= 1; ++releases) {
            const int length = Next(2) == 0 ? -1 : NextInt(static_cast<std::size_t>(size) + 1);
            s.ReleaseBuffer(length);
            m.ReleaseBuffer(length);
        }
    }

    static void RequireSame(const Pair& pair) {
        const Buffer& buffer = *pair.model.operator->();
        const CStringData& header = reinterpret_cast<const CStringData*>(pair.string.GetAsUniCharStr())[-1];
        Require(pair.string == pair.model.Text());
        Require(std::equal(buffer.known.begin(), buffer.known.end(), pair.string.GetAsUniCharStr()));
        Require(header.refCount == buffer.count && header.allocLength == buffer.capacity);
        Require(pair.model.IsEmptyOne() || (header.cachedCFString != nullptr) == buffer.hasHostString);
    }

    Choices m_Choices;
    Pair m_Pairs[8];
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Strings({data, size}).Run();
    return 0;
}
