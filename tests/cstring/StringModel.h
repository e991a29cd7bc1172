// Eight strings that share, lock and edit one another, beside a plain model of them: std::u16string for
// the text, and the counting rules, room and kept host strings said in the fewest words.
#pragma once

#include <Lum/CString.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

namespace StringModel {

struct Buffer {
    std::u16string text;
    int count = 1;
    int room = 0;
    bool isEmptyOne = false;
    bool keepsHostString = false;
};

/// What one string is to be.
class String {
public:
    [[nodiscard]] const Buffer& Get() const { return *m_Buffer; }
    [[nodiscard]] const std::u16string& Text() const { return m_Buffer->text; }
    [[nodiscard]] int Length() const { return static_cast<int>(Text().size()); }

    void Release() {
        if (!m_Buffer->isEmptyOne) {
            ++m_Buffer->count;
        }
        m_Buffer = EmptyOne();
    }
    void Alloc(int length) {
        m_Buffer = EmptyOne();
        if (length > 0) {
            m_Buffer = std::make_shared<Buffer>();
            m_Buffer->room = length <= 64    ? 64
                             : length <= 128 ? 128
                             : length <= 256 ? 256
                             : length <= 512 ? 512
                                             : length;
        }
    }
    void CopyBeforeWrite() {
        if (m_Buffer->count > 1) {
            Move(Length());
        }
        m_Buffer->keepsHostString = false;
    }
    void Assign(const std::u16string& text) {
        if (m_Buffer->count >= 2 || static_cast<int>(text.size()) > m_Buffer->room) {
            Release();
            Alloc(static_cast<int>(text.size()));
        }
        m_Buffer->keepsHostString = false;
        m_Buffer->text = text;
    }
    void AssignString(const String& other) {
        if (m_Buffer == other.m_Buffer) {
            return;
        }
        if ((m_Buffer->count < 0 && !m_Buffer->isEmptyOne) || other.m_Buffer->count < 0) {
            Assign(other.Text());
        } else {
            Release();
            Share(other);
        }
    }
    /// A copy that comes and goes.
    void CopyAndDrop() {
        if (m_Buffer->count > 0) {
            m_Buffer->count += 2;
        }
    }
    void Share(const String& other) {
        m_Buffer = other.m_Buffer;
        ++m_Buffer->count;
    }
    /// An edit that copies before it writes and grows to the exact length where it must.
    void Edit(const std::u16string& text) {
        CopyBeforeWrite();
        if (static_cast<int>(text.size()) > m_Buffer->room) {
            Move(static_cast<int>(text.size()));
        }
        m_Buffer->text = text;
    }
    /// Growth that goes to the exact length at once.
    void Append(const std::u16string& tail) {
        if (tail.empty()) {
            return;
        }
        const std::u16string text = Text() + tail;
        if (m_Buffer->count >= 2 || static_cast<int>(text.size()) > m_Buffer->room) {
            Move(static_cast<int>(text.size()));
        }
        m_Buffer->keepsHostString = false;
        m_Buffer->text = text;
    }
    void GetBuffer(int least) {
        if (m_Buffer->count >= 2 || least > m_Buffer->room) {
            Move(std::max(least, Length()));
        }
    }
    void Lock() {
        GetBuffer(0);
        m_Buffer->count = -1;
    }
    /// Only for one who shares with nobody.
    void Unlock() { m_Buffer->count = m_Buffer->isEmptyOne ? -1 : 1; }
    void FreeExtra() {
        if (Length() != m_Buffer->room) {
            Move(Length());
        }
    }
    void Empty() {
        if (Length() != 0) {
            m_Buffer->count >= 0 ? Release() : Assign(u"");
        }
    }
    void KeepHostString() { m_Buffer->keepsHostString = true; }

private:
    static const std::shared_ptr<Buffer>& EmptyOne() {
        static const auto buffer = std::make_shared<Buffer>(Buffer{u"", -1, 0, true, false});
        return buffer;
    }
    void Move(int room) {
        const std::u16string text = Text();
        Release();
        Alloc(room);
        m_Buffer->text = text;
    }

    std::shared_ptr<Buffer> m_Buffer = EmptyOne();
};

/// Where the steps come from: a random generator, or a fuzzer's bytes. `Next(n)` is below n.
template <class Numbers>
class Sequence {
public:
    explicit Sequence(Numbers& numbers) : m_Numbers(numbers) {}

    /// Does one operation on both sides; false if they differ in anything that can be seen.
    bool Step() {
        const std::size_t i = Next(kStrings);
        CString& s = *m_Strings[i];
        String& m = m_Models[i];
        const std::size_t j = Next(kStrings);
        Operate(s, m, *m_Strings[j], m_Models[j], i);
        return Agree(i) && Agree(j);
    }

private:
    static constexpr std::size_t kStrings = 8;

    std::size_t Next(std::size_t bound) { return m_Numbers.Next(bound); }
    int NextInt(std::size_t bound) { return static_cast<int>(Next(bound)); }
    int Place(const String& m) { return NextInt(m.Text().size() + 4) - 2; }
    char16_t Unit() { return u"abA \u00A0\xD83D\xDE00,"[Next(8)]; }
    std::u16string Text() {
        std::u16string text(Next(8) == 0 ? Next(700) : Next(9), u'x');
        std::generate(text.begin(), text.end(), [&] { return Unit(); });
        return text;
    }

    /// What a pointer into a string's own text names: up to the first 0.
    static std::u16string OwnText(const std::u16string& text, std::size_t from) { return text.c_str() + from; }

    void Operate(CString& s, String& m, CString& other, String& otherModel, std::size_t i) {
        const std::u16string before = m.Text();
        switch (Next(24)) {
            case 0: {
                const auto text = Text();
                s = text.c_str();
                return m.Assign(text);
            }
            case 1:
                s = other;
                return m.AssignString(otherModel);
            case 2: {
                const CString copy(s);
                return m.CopyAndDrop();
            }
            case 3:
                if (before.size() + otherModel.Text().size() < 3000) {
                    m.Append(std::u16string(otherModel.Text()));
                    s += other;
                }
                return;
            case 4: {
                const auto unit = Unit();
                s += unit;
                return m.Append({unit});
            }
            case 5: {
                // A text of its own, from anywhere in it.
                const int place = Place(m);
                const auto from = Next(before.size() + 1);
                const auto at = static_cast<std::size_t>(std::clamp(place, 0, m.Length()));
                const auto own = OwnText(before, from);
                if (before.size() + own.size() < 3000) {
                    s.Insert(place, s.GetAsUniCharStr() + from);
                    if (!own.empty()) {
                        m.Edit(std::u16string(before).insert(at, own));
                    }
                }
                return;
            }
            case 6: {
                const int place = Place(m);
                const int count = NextInt(12);
                s.Delete(place, count);
                const auto at = static_cast<std::size_t>(std::max(place, 0));
                if (count > 0 && at < before.size()) {
                    m.Edit(std::u16string(before).erase(at, static_cast<std::size_t>(count)));
                }
                return;
            }
            case 7: {
                const auto from = Text();
                const auto to = Text();
                std::u16string text;
                std::size_t at = 0;
                std::size_t count = 0;
                for (std::size_t found = 0; !from.empty() && (found = before.find(from, at)) != text.npos; ++count) {
                    text += before.substr(at, found - at) + to;
                    at = found + from.size();
                }
                text += before.substr(at);
                if (text.size() < 3000) {
                    m_IsRight = m_IsRight && s.Replace(from.c_str(), to.c_str()) == static_cast<int>(count);
                    if (count != 0) {
                        m.Edit(text);
                    }
                }
                return;
            }
            case 8: {
                const auto from = Unit();
                const auto to = Unit();
                s.Replace(from, to);
                auto text = before;
                std::replace(text.begin(), text.end(), from, to);
                return from == to ? void() : m.Edit(text);
            }
            case 9: {
                const auto unit = Unit();
                s.Remove(unit);
                auto text = before;
                std::erase(text, unit);
                return m.Edit(text);
            }
            case 10: {
                const int place = Place(m);
                s.SetAt(place, u'Z');
                auto text = before;
                if (place >= 0 && place < m.Length()) {
                    text[static_cast<std::size_t>(place)] = u'Z';
                }
                return m.Edit(text);
            }
            case 11: {
                s.Trim();
                const auto first = std::min(before.find_first_not_of(u' '), before.size());
                const auto last = before.find_last_not_of(u" \u00A0");
                // Only what the left end leaves can be cut at the right.
                return m.Edit(last == before.npos || last < first ? u"" : before.substr(first, last + 1 - first));
            }
            case 12:
                s.Empty();
                return m.Empty();
            case 13:
                s.LockBuffer();
                return m.Lock();
            case 14:
                if (m.Get().count < 2) {
                    s.UnlockBuffer();
                    m.Unlock();
                }
                return;
            case 15: {
                const int room = NextInt(700);
                std::fill_n(s.GetBuffer(room), room, static_cast<unsigned short>('w'));
                const int length = NextInt(static_cast<std::size_t>(room) + 1);
                s.ReleaseBuffer(length);
                m.GetBuffer(room);
                auto text = before + std::u16string(700, u'w');
                std::fill_n(text.begin(), room, u'w');
                return m.Edit(text.substr(0, static_cast<std::size_t>(length)));
            }
            case 16: {
                const auto length = Next(700);
                s.GetBufferSetLength(static_cast<int>(length));
                m.GetBuffer(static_cast<int>(length));
                auto text = before;
                text.resize(length);
                return m.Edit(text);
            }
            case 17:
                s.FreeExtra();
                return m.FreeExtra();
            case 18: {
                const int first = Place(otherModel);
                const int count = NextInt(700);
                const auto at = static_cast<std::size_t>(std::clamp(first, 0, otherModel.Length()));
                const auto text = otherModel.Text().substr(at, static_cast<std::size_t>(count));
                String piece;
                first <= 0 && text.size() == otherModel.Text().size() && otherModel.Get().count > 0
                    ? piece.Share(otherModel)
                    : piece.Assign(text);
                s = other.Mid(first, count);
                m.AssignString(piece);
                return piece.Release();
            }
            case 19: {
                const auto from = Next(before.size() + 1);
                s = s.GetAsUniCharStr() + from;
                return m.Assign(OwnText(before, from));
            }
            case 20:
                m_Strings[i] = std::make_unique<CString>();
                return m.Release();
            case 21: {
                s.MakeLower();
                s.MakeReverse();
                auto text = before;
                std::replace(text.begin(), text.end(), u'A', u'a');
                std::replace(text.begin(), text.end(), u'Z', u'z');
                std::reverse(text.begin(), text.end());
                return m.Edit(text);
            }
            case 22:
                s.ReleaseCFStringRef(s.GetCFStringRef(0));
                return m.KeepHostString();
            default:
                swap(s, other);
                return std::swap(m, otherModel);
        }
    }

    [[nodiscard]] bool Agree(std::size_t i) const {
        const CString& s = *m_Strings[i];
        const String& m = m_Models[i];
        const auto& header = reinterpret_cast<const CStringData*>(s.GetAsUniCharStr())[-1];
        return m_IsRight && s == m.Text() && s[s.GetLength()] == 0 && s.GetAsUniCharStr()[s.GetLength()] == 0 &&
               header.refCount == m.Get().count && header.allocLength == m.Get().room &&
               (m.Get().isEmptyOne || (header.cachedCFString != nullptr) == m.Get().keepsHostString);
    }

    static std::unique_ptr<CString> Fresh() { return std::make_unique<CString>(); }

    Numbers& m_Numbers;
    bool m_IsRight = true;
    std::unique_ptr<CString> m_Strings[kStrings] = {Fresh(), Fresh(), Fresh(), Fresh(),
                                                    Fresh(), Fresh(), Fresh(), Fresh()};
    String m_Models[kStrings];
};

}  // namespace StringModel
