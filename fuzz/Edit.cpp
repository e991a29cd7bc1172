// Property: the pieces of a query or path, joined, are the same bytes; an edit changes the piece that it names and no
// other, as it does in a plain list of pieces; and what a path was made to be is what its URI, printed, parses to.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/PathView.h>
#include <Lum/QueryView.h>

#include "fuzz/Fuzz.h"
#include "tests/URI/Exposed.h"

namespace {

using Pieces = std::vector<std::string>;

std::string Joined(const Pieces& pieces, char mark) {
    std::string text;
    for (const std::string& piece : pieces) {
        text.append(&piece == pieces.data() ? 0 : 1, mark).append(piece);
    }
    return text;
}

/// The pieces of a text; they must be those of the view.
template <class View>
Pieces Listed(std::string_view text, const View& view, char mark) {
    Pieces pieces;
    for (const auto piece : view) {
        Require(piece.text == view[pieces.size()].text && piece.text.find(mark) == std::string_view::npos);
        pieces.emplace_back(piece.text);
    }
    Require(pieces.size() == view.size() && Joined(pieces, mark) == text);
    return pieces;
}

/// One of the edits that both texts have, on the list of pieces and on the text. The choice is made by two bytes.
template <class EditText>
void Change(Pieces& pieces, const std::string& piece, unsigned how, std::size_t index, const EditText& edit) {
    const auto at = pieces.begin() + static_cast<std::ptrdiff_t>(std::min(index, pieces.size()));
    const bool isThere = at != pieces.end();
    const bool isDone = edit(how, index);
    if (how == 0) {
        pieces.insert(at, piece);
        // A single empty piece is none.
        pieces = pieces == Pieces{""} ? Pieces{} : pieces;
        return;
    }
    Require(isDone == isThere);
    if (isThere && how == 1) {
        *at = piece;
    } else if (isThere) {
        pieces.erase(at);
    }
}

void CheckQuery(const std::string& text, const std::string& word, unsigned how, std::size_t index) {
    Exposed uri("http://u:p@h:1/%7e?x#f");
    uri.SetQuery(text, false);
    Lum::QueryEdit edit(uri);
    Pieces pieces = Listed(text, Lum::QueryView(uri), '&');
    const std::string key = Lum::URI::QueryEscape(word);
    if (how < 3) {
        Change(pieces, key + "=" + key, how, index, [&](unsigned what, std::size_t at) {
            return what == 0   ? (edit.Insert(at, word, word), true)
                   : what == 1 ? edit.Replace(at, word, word)
                               : edit.Remove(at);
        });
    } else {
        const std::string wanted = Lum::QueryPair(Lum::QueryView(text)[index].text).GetKey();
        const std::size_t first = Lum::QueryView(text).Find(wanted);
        Pieces kept;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            const Lum::QueryPair pair(pieces[i]);
            if (how == 3 && i == first) {
                kept.push_back(std::string(pair.key) + "=" + key);
            } else if (pair.GetKey() != wanted) {
                kept.push_back(pieces[i]);
            }
        }
        if (how == 3) {
            edit.Set(wanted, word);
            if (first == Lum::QueryView::npos) {
                kept.push_back("=" + key);
            }
        } else {
            Require(edit.RemoveAll(wanted) == pieces.size() - kept.size());
        }
        pieces = kept;
    }
    Require(edit.GetText() == Joined(pieces, '&'));
    Exposed expected = uri;
    expected.m_Query = edit.GetText();
    edit.PutInto(uri);
    Require(uri.Record() == expected.Record());
}

void CheckPath(const std::string& text, const std::string& word, unsigned how, std::size_t index) {
    Exposed uri(text);
    Lum::PathEdit edit(uri);
    const bool isRooted = uri.m_Path.starts_with('/');
    const Lum::PathView view(uri);
    Require(view.IsRooted() == isRooted);
    Pieces pieces = Listed(std::string_view(uri.m_Path).substr(isRooted ? 1 : 0), view, '/');
    Exposed same = uri;
    edit.PutInto(same);
    Require(!uri.IsHierarchical() || same.Record() == uri.Record());

    const std::string written = Lum::URI::EscapeChars(word, Lum::URI::URIexcluded + "/");
    Change(pieces, written, how % 3, index, [&](unsigned what, std::size_t at) {
        return what == 0 ? (edit.Insert(at, word), true) : what == 1 ? edit.Replace(at, word) : edit.Remove(at);
    });
    const std::string joined = Joined(pieces, '/');
    Require(edit.GetText() == (isRooted ? "/" : "") + joined &&
            edit.GetCount() == (joined.empty() ? 0 : pieces.size()));
    if (!uri.IsHierarchical() || Exposed(uri.ToString(false)).Record() != uri.Record()) {
        return;
    }
    Exposed expected = uri;
    edit.PutInto(uri);
    // A guard may stand before the path; nothing else differs.
    Require(uri.m_Path.ends_with(edit.GetText()) && uri.m_Path.size() <= edit.GetText().size() + 3);
    if (expected.m_Path != uri.m_Path) {
        expected.m_Path = uri.m_Path;
        expected.SetHierState(true);
    }
    Require(uri.Record() == expected.Record());
    // The parser writes a drive, "/C:", in another way.
    if (uri.IsValidURI() && !(uri.m_Scheme == "file" && uri.m_Path.substr(0, 3).ends_with(':'))) {
        Require(Exposed(uri.ToString(false)).Record() == uri.Record());
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const unsigned how = size == 0 ? 0 : data[size - 1] % 5U;
    const std::size_t index = size < 2 ? 0 : data[size - 2] % 6U;
    CheckQuery(text, text.substr(size / 2, 8), how, index);
    CheckPath(text, text.substr(size / 2, 8), how, index);
    return 0;
}
