// Operations that take the length of what they make or write, for tests/cstring/LimitsTest.cpp: how many numbers each
// takes, what it gives, and what that is to be.
ROW("CString(units, n)", 1, Last(CString(Block(n.a).data(), n.a)), Filled(n.a, u'u'))
ROW("CString(unit, n)", 1, Last(CString('y', n.a)), Filled(n.a, u'y'))
ROW("CString(bytes, n)", 1, Last(CString("\xFF", n.a)), Filled(n.a, u'\0'))
ROW("GetBuffer", 1, WrittenBehind(s, n.a), t + Filled(std::max(n.a, 0) - int(t.size()), u'u'))
ROW("GetBufferSetLength", 1, (s.GetBufferSetLength(n.a), U16Text(s)), (t.resize(Block(n.a).size()), t))
ROW("AllocBuffer", 1, (s.AllocBuffer(n.a), U16Text(s)), Filled(n.a, u'\0'))
ROW("AssignCopy", 1, (s.AssignCopy(n.a, Block(n.a).data()), U16Text(s)), Filled(n.a, u'u'))
ROW("ConcatInPlace", 1, (s.ConcatInPlace(n.a, Block(n.a).data()), U16Text(s)), t + Filled(n.a, u'u'))
ROW("ConcatCopy", 2, (s.ConcatCopy(n.a, Block(n.a).data(), n.b, Block(n.b).data()), U16Text(s)),
    n.a <= 0 && n.b <= 0 ? t : Filled(n.a, u'u') + Filled(n.b, u'u'))
ROW("AllocCopy", 2, CopiedWithMore(s, n.b, n.a),
    (t = t.substr(n.to, Block(n.a).size()), t.resize(2 * Block(n.a).size()), t))
ROW("Format", 2, (s.Format(u"%*.*d", std::max(n.a, -70'000), n.b, 0), Digits(s.GetLength())),
    Digits(std::max({n.b < 0 ? 1 : n.b, n.a, -std::max(n.a, -70'000)})))
ROW("ToMac", 1, PascalLength(s.Left(200), n.a),
    (t = t.substr(0, 200), Digits((n.a > 0 ? 0 : -1) + (n.a >= int(t.size()) + 2 ? int(t.size()) : 0))))
ROW("CFStringGetLPWSTR", 1, HostUnits(s, n.a), t.substr(0, n.from))
ROW("NewHandle", 2, HandleSize(n.a, n.b), Digits(n.a < 0 ? 0 : n.b < 0 ? n.a : n.b))
ROW("CFStringGetLPSTR", 1, HostBytes(s, n.a), n.a > int(t.size()) ? t : u"")
ROW("inflateAsciiToLPTSTR", 1, Inflated(n.a), Filled(n.a, u'x'))
ROW("StreamConverter", 2, Streamed(n.a, n.b), Digits(std::max(std::min(n.a, n.b), 0)))
ROW("CFStringCreateWithLPCWSTR", 1, Created(n.a), Filled(n.a, u'u'))
