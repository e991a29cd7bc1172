// Operations that take an index or a count, for tests/cstring/LimitsTest.cpp: how many numbers each takes, what it
// gives, and the same of a plain text.
ROW("GetAt", 1, U16Text(1, s.GetAt(n.a)), U16Text(1, n.a == int(n.from) ? t[n.from] : u'\0'))
ROW("Left", 1, Last(s.Left(n.a)), t.substr(0, n.from))
ROW("Right", 1, Last(s.Right(n.a)), t.substr(t.size() - n.from))
ROW("RightMost", 1, Last(s.RightMost(n.a)), t.substr(n.from))
ROW("Mid", 2, Last(s.Mid(n.a, n.b)), t.substr(n.from, n.to))
ROW("Mid to the end", 1, Last(s.Mid(n.a)), t.substr(n.from))
ROW("Find a unit", 1, Digits(s.Find(u'b', n.a)), Digits(t.find(u'b', n.from)))
ROW("Find a text", 1, Digits(s.Find(u"xb", n.a)), Digits(t.find(u"xb", n.from)))
ROW("Delete", 2, Changed(s, s.Delete(n.a, n.b)), Digits(t.size()).append(t.erase(n.from, n.to)))
ROW("Insert a unit", 1, Changed(s, s.Insert(n.a, 'z')), Digits(t.size() + 1).append(t.insert(n.from, u"z")))
ROW("Insert a text", 1, Changed(s, s.Insert(n.a, u"yz")), Digits(t.size() + 2).append(t.insert(n.from, u"yz")))
ROW("SetAt", 1, (s.SetAt(n.a, 'z'), U16Text(s)),
    n.a == int(n.from) && n.from < t.size() ? t.replace(n.from, 1, u"z") : t)
ROW("GetPart", 1, Last(s.GetPart(',', n.a)) + Last(s.GetPart(CString(u","), n.a)), Part(t, n.a) + Part(t, n.a))
ROW("Tokenize", 1, Tokenized(s.Tokenize(u",", n.a), n.a), Token(t, n.from))
ROW("ReleaseBuffer", 1, (s.ReleaseBuffer(n.a), Digits(s.GetLength())), Digits(Released(int(t.size()), n.a)))
ROW("itoa", 2, Narrow([&](char* to) { itoa(n.a, to, n.b); }, n.b),
    Digits(n.a).substr(0, std::size_t(std::max(n.b, 1) - 1)))
ROW("_ltoa", 2, Narrow([&](char* to) { _ltoa(n.a, to, n.b); }, 24), u"")
ROW("references of resource files", 1,
    Digits(Lum::Platform::CloseResourceFile(short(n.a)) || Lum::Platform::UpdateResourceFile(short(n.a))), u"0")
