// The public operations that tests/MemoryFailures.cpp lets fail: a name, what a failure leaves, a call. Operations
// that change nothing stand in one row: the failure of each of them is one of the row's.
// URIs.
ROW("constructors and text", kSame,
    s.bytes = URI(kUri).ToString(true) + URI(kOther.c_str()).ToString(false) + URI(s.uri).ToStringUTF8() +
              s.uri.ToStringUTF8Escaped() + Joined(s.uri.ToEncodedString("koi8-r")) + URI::Resolve(s.uri).GetPath())
ROW("uri = uri", kEmptied, s.uri = Exposed(kOther))
ROW("CopyURI", kEmptied, s.uri.CopyURI(s.other))
ROW("uri = text", kEmptied, s.uri = kOther)
ROW("uri = const char*", kEmptied, s.uri = kOther.c_str())
ROW("ParseURI", kEmptied, s.uri.ParseURI(kOther + kLong + kLong))
ROW("ParseURI of a component", kEmptied, s.uri.ParseURI(s.uri.m_Path))
ROW("FromEncodedString", kEmptied, s.uri.FromEncodedString(kOther + "%C1", "koi8-r"))
ROW("printing", kSame, s.out.exceptions(std::ios::badbit),
    s.out << s.uri << s.text << URI::StringProxy(kLong) << Lum::TimeStamp(), s.bytes = s.out.str())
ROW("comparison", kSame,
    s.number = s.uri == s.other || s.uri == kUri || s.uri < s.other || s.uri < kUri.c_str() ||
               std::hash<URI>()(s.uri) == 0 || URI::Compare(kUri, kOther, false) == 0)
ROW("ChDir", kUsable, s.uri.ChDir(kReference, false))
ROW("ChDir, escaped", kUsable, s.uri.ChDir(kReference, true))
ROW("ChDir, absolute", kUsable, s.uri.ChDir(kOther, false))
ROW("MakeRelativeURI", kUsable, s.uri.MakeRelativeURI(s.other, true))
ROW("MakeAbsoluteURI", kUsable, (s.uri = kReference), s.uri.MakeAbsoluteURI(s.other))
ROW("relations", kSame,
    s.number = s.uri.GetRelation(s.other, false) + URI::GetRelationByString(kUri, kOther) +
               int{URI::CompareAuthority(kUri, kOther)} + int{s.uri.IsUnderDirectory("a long-path-to")} +
               int{s.uri.IsOfType(kLong)} + int{s.uri.IsOfFileType(kLong)})
ROW("common parents", kSame, s.bytes = URI::GetCommonParentByString(kUri, kOther, false).ToString(false))
ROW("SetQuery", kSame, s.uri.SetQuery(kLong + kLong, true))
ROW("SetParts", kUsable, s.uri.SetParts(kLong, kLong, kLong, kUri, kUri, kLong))
ROW("GetParts", kUsable, s.uri.GetParts(s.bytes, s.wide, s.bytes, s.bytes, s.wide, s.bytes))
ROW("getters", kSame,
    s.bytes = s.uri.GetScheme() + s.uri.GetUsername() + s.uri.GetPassword() + s.uri.GetAuthority() +
              s.uri.GetServerPort() + s.uri.GetPath() + s.uri.GetQuery(true) + s.uri.GetFragment() +
              s.uri.GetNonHierarchical() + s.uri.GetDefaultPort() +
              Joined(s.uri.GetFilename(true), s.uri.GetExtension(false), s.uri.GetLastPathComponent()))
ROW("RemoveLastPathComponent", kUsable, s.bytes = Joined(s.uri.RemoveLastPathComponent()))
ROW("ForceEscape", kUsable, s.uri.ForceEscape())
ROW("local paths", kSame,
    s.bytes = Joined(s.local.ToLocalPath(), s.local.ToLocalPathUnix(), s.local.ToLocalPathWin(),
                     URI("file://localhost/a-long-name-of-a-folder/x").ToLocalPathMac()))
ROW("GetQueryByMap", kSame, s.uri.GetQueryByMap(s.pairs))
ROW("SetQueryByMap", kSame, s.uri.SetQueryByMap({{kLong, kLong}, {"b", kLong}}))
ROW("GetQueryValue", kSame, s.uri.GetQueryValue("a-long-key", s.bytes))
ROW("GetQueryValue, wide", kSame, s.uri.GetQueryValue("a-long-key", s.wide))
ROW("SetQueryValue", kSame, s.uri.SetQueryValue("b-long-key", kLong))
ROW("SplitPath and JoinPath", kSame, URI::SplitPath(kFile, s.segments), s.bytes = URI::JoinPath(s.segments, true, true))
ROW("escapes", kSame,
    s.bytes = Joined(URI::Escape(kLong), URI::EscapeChars(kLong, "aeiou"), URI::Unescape(kUri, false),
                     URI::QueryEscape(kUri), URI::QueryUnescape(kUri)))
ROW("NormalizeEncoding", kSame, Check(URI::NormalizeEncoding(s.bytes, "shift_jis")))
// Conversions.
ROW("from Shift-JIS", kSame, s.bytes = Transcoder::EncodingToUTF8("\x83\x5C", "shift_jis"))
ROW("from KOI8-R", kSame, s.bytes = Transcoder::EncodingToUTF8("\xC1", "koi8-r"))
ROW("from ISO-2022-JP", kSame, s.wide = Transcoder::EncodingToUTF16("\x1B$B$\"", "iso-2022-jp"))
ROW("from HZ", kSame, s.bytes = Transcoder::EncodingToUTF8("a~{HU~}", "hz"))
ROW("from UTF-7", kSame, s.bytes = Transcoder::EncodingToUTF8("a+ZeU", "utf-7"))
ROW("to GB 18030", kSame, s.bytes = Transcoder::UTF8ToEncoding("日", "gb18030"))
ROW("to ISO-2022-KR", kSame, s.bytes = Transcoder::UTF16ToEncoding(u"日", "iso-2022-kr"))
ROW("to Latin-1", kSame, s.bytes = Lum::WideToCharSet(u"é", 0x0201))
ROW("UTF-8", kSame, s.bytes = Transcoder::asUTF8(Transcoder::UTF8ToUTF16(kUri)))
ROW("UTF-8 that is malformed", kSame, s.wide = Transcoder::asUTF16(kUri + "\xFF" + kUri))
ROW("the file system's encoding", kSame, s.bytes = Transcoder::asFilesystemString(Transcoder::filesytemToUTF16(kUri)))
ROW("the host's encodings", kSame, s.bytes = Transcoder::DefaultChannelEncoding() + Transcoder::PlatformEncoding())
ROW("ConvertText", kSame, s.bytes = Lum::ConvertText(kUri + "é\xFF", "utf-8", "iso-8859-1").text)
ROW("ConvertTextToUTF16", kSame, s.wide = Lum::ConvertTextToUTF16(kUri, "iso-8859-2").text)
ROW("ConvertTextFromUTF16", kSame, s.bytes = Lum::ConvertTextFromUTF16(u"é", "macintosh").text)
ROW("calls from C, which answer a status instead", kSame, CallFromC(s))
ROW("StreamConverter, used again after a failure", kSame, ConvertAStream(s))
ROW("KnownEncodings", kSame, s.bytes = Lum::KnownEncodings().back().name)
// Strings.
ROW("constructors", kSame,
    s.number = CString(u'x', 70).GetLength() + CString(kLong.c_str()).GetLength() + CString("\xFF", 5).GetLength() +
               CString(std::u16string_view(s.text)).GetLength() + CString::FromUTF8(kUri + "\xFF").GetLength() +
               CString(URI::StringProxy(kLong)).GetLength() + (s.text + s.text + 'x' + u"y").GetLength())
ROW("parts", kSame,
    s.number = s.text.Left(70).GetLength() + s.text.Mid(3).GetLength() + s.text.RightMost(1).GetLength() +
               s.text.SpanIncluding(u"x").GetLength() + s.text.GetPart(':', 0).GetLength() +
               s.text.GetLastPart(CString(u":b:")).GetLength() + s.text.GetPartRange(':', 0, 2).GetLength())
ROW("Tokenize", kSame, s.text.Tokenize(u" ", s.number))
ROW("string = string", kSame, s.text.LockBuffer(), s.text = s.sharer)
ROW("string = units", kSame, s.text = std::u16string(700, u'z').c_str())
ROW("string = const char*", kSame, s.text = kUri.c_str())
ROW("SetAt", kSame, s.text.SetAt(0, 'z'))
ROW("Delete", kSame, s.text.Delete(3, 5))
ROW("Insert", kSame, s.text.Insert(3, s.text.GetAsUniCharStr()))
ROW("Replace units", kSame, s.text.Replace('x', 'z'))
ROW("Replace, shorter", kSame, s.text.Replace(u"xx", u"z"))
ROW("Replace, longer", kSame, s.text.Replace(u"x", u"zz"))
ROW("Remove", kSame, s.text.Remove('x'))
ROW("TrimLeft", kSame, s.text.TrimLeft('x'))
ROW("TrimRight", kSame, s.text.TrimRight(u"y"))
ROW("+=", kSame, s.text += s.text)
ROW("Format", kSame, s.text.Format(u"%s%d%S%f", s.text.GetAsUniCharStr(), 3, "narrow", 1.5))
ROW("Format of a long double", kSame, s.text.Format(u"%.3000Lf", 1.5L))
ROW("Format of a long double's digits", kSame, s.text.Format(u"%.3000La", 1.5L))
ROW("Format with positions", kSame, s.text.Format(u"%2$s%1$900d", 1, u"two"))
ROW("Format by a number", kSame, s.text.Format(9U))
ROW("a host's string", kSame, UseHostStrings(s))
ROW("an HFS name", kSame, s.text.GetHFSUniStr255(&s.name), s.text.SetFromHFSUniStr255(&s.name))
ROW("a Pascal string", kSame, CString(u"abc").ToMac(s.pascal, 256), s.text.FromMac(s.pascal))
ROW("GetBuffer", kSame, s.text.ReleaseBuffer(s.text.GetBuffer(700)[0]))
ROW("GetBufferSetLength", kSame, s.text.GetBufferSetLength(3))
ROW("ReleaseBuffer", kSame, s.text.ReleaseBuffer(3))
ROW("AllocBuffer", kSame, s.text.AllocBuffer(70))
ROW("AllocBeforeWrite", kSame, s.text.AllocBeforeWrite(9))
ROW("AllocCopy", kSame, s.sharer.AllocCopy(s.text, 9, 0, 9))
ROW("AssignCopy", kSame, s.text.AssignCopy(3, u"abc"))
ROW("ConcatCopy", kSame, s.text.ConcatCopy(3, u"abc", 3, u"def"))
ROW("CFixedAlloc", kSame, static_cast<void>(CFixedAlloc(40, 4).Alloc()))
// Strings by number and name.
ROW("a string by the index", kSame, s.text.LoadString(7U))
ROW("a single string", kSame, s.text.LoadString(9U))
ROW("a table's string", kSame, s.text.LoadString(10U))
ROW("a string of an XML table", kSame, LoadFrom(s, "xml"))
ROW("a string of a binary table", kSame, LoadFrom(s, "bin"))
ROW("a number that nobody knows", kSame, s.text.LoadString(13U))
ROW("InitStrResTable", kSame, InitStrResTable(), s.number = NumStrRes())
ROW("one more table", kSame, CString::AddStringTableForSearch("More"), s.text.LoadString(11U))
ROW("LoadString of a handle", kSame, s.text.LoadString(s.handle))
ROW("LoadUnicodeString", kSame, s.text.LoadUnicodeString(s.handle))
ROW("UnloadUnicodeString", kSame, s.text.UnloadUnicodeString(&s.handle))
ROW("UnloadString", kSame, s.text.UnloadString(&s.handle))
ROW("a resource that is there", kSame, s.text.UnloadString(kText, CString(u"Name"), false))
ROW("a resource that is not", kSame, s.text.UnloadString(kText, CString(u"Other"), true))
ROW("LoadString by name", kSame, Check(s.text.LoadString(kText, CString(u"Name"), false)))
// The host.
ROW("SetLocale", kSettings, SetLocale("ko_KR.eucKR@a-modifier-of-some-length"))
ROW("SetStartupVolumeName", kSettings, SetStartupVolumeName(kLong))
ROW("SetMainBundle", kSettings, SetMainBundle("a-relative-folder-of-a-long-name"))
ROW("explanations", kSame, s.bytes = ExplainStringTable("None") + ExplainResourceFile(folder / "Localizable.strings"))
ROW("OpenResourceFile", kSame, OpenANewFile())
ROW("UpdateResourceFile", kSame, Check(UpdateResourceFile(file)))
ROW("NewHandle", kSame, DisposeHandle(Check(NewHandle(100))))
ROW("SetHandleSize", kSame, SetHandleSize(s.handle, 1000), Check(GetHandleSize(s.handle) == 1000))
ROW("no handle", kSame, Check(GetHandleSize(nullptr) == 0))
