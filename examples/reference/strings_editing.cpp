// A 16-bit text written: edited in place, joined, and written through its buffer; what a copy shares, and when a buffer
// goes back, by what stands in front of the units.
#include <algorithm>
#include <iostream>
#include <memory>

#include <Lum/CString.h>
#include <Lum/FixedAlloc.h>

namespace {

void Edit() {
    CString text(u"  Hello, World  ");
    text.Trim();
    text.Replace(u"World", u"Lum");
    text.Insert(5, u" there");
    text.SetAt(0, 'h');
    std::cout << text << ", " << text.Delete(5, 6) << " units before, " << text.Remove('l') << " l removed: " << text
              << '\n';
    text.MakeUpper();
    std::cout << text;
    text.MakeLower();
    text.MakeReverse();
    std::cout << ' ' << text;
    text.TrimLeft('m');
    text.TrimRight(u"h");
    std::cout << ' ' << text << '\n';
    text.Empty();
    text += u"a";
    text += 'b';
    std::cout << text + u"c" + CString(u"d") << '\n';
}

// A file's contents, written to where the text will be.
void WriteThroughBuffer() {
    CString text;
    std::fill_n(text.GetBuffer(1000), 700, u'x');
    text.ReleaseBuffer(700);
    std::fill_n(text.GetBufferSetLength(5), 5, u'y');
    text.LockBuffer();  // So that the large buffer goes back to the heap.
    text.FreeExtra();   // The least buffer that holds the text.
    std::cout << text << ' ' << text.GetLength() << '\n';
}

// The header in front of the units, for the life of one buffer.
void Show(const char* step, const CString& text) {
    const CStringData& data = reinterpret_cast<const CStringData*>(text.GetAsUniCharStr())[-1];
    std::cout << step << ": refCount " << data.refCount << ", dataLength " << data.dataLength << ", allocLength "
              << data.allocLength << (data.cachedCFString == nullptr ? "" : ", cached") << ", " << text << '\n';
}

void LifeOfABuffer() {
    CString text(u"hello");
    Show("text is made", text);
    CString copy(text);
    Show("copy shares it", text);
    copy += u"!";
    Show("copy is written", copy);
    Show("text has the first still", text);
    text.CopyBeforeWrite();
    Show("text before its write", text);
    text.LockBuffer();
    Show("text is locked", text);
    const unsigned short* const units = text;
    text = CString();
    text.Release();
    const CString next(u"next");
    std::cout << "text is released: " << (next.GetAsUniCharStr() == units ? "the next text has it" : "another one")
              << '\n';
}

// What the operations are made of, for code that manages buffers by itself.
void Primitives() {
    CString text, part;
    text.AllocBuffer(3);
    text.AllocBeforeWrite(100);
    text.AssignCopy(3, u"abc");
    text.ConcatInPlace(2, u"de");
    text.AllocCopy(part, 2, 1, 0);
    std::cout << text << ' ' << part;
    part.Release();
    part.ConcatCopy(2, u"xy", 1, u"z");
    std::cout << ' ' << part;
    part.LockBuffer();
    part.UnlockBuffer();
    CStringData* const data = reinterpret_cast<CStringData*>(part.GetBuffer(0)) - 1;
    part.AllocBuffer(0);
    CString::FreeData(data);  // The caller knows that nobody else has it.
    std::cout << ' ' << part.IsEmpty() << (_afxDataNil == &_afxInitData.header)
              << (_afxPchNil == &_afxInitData.terminator) << '\n';
    const CStringEmptyBuffer& empty = _afxInitData;
    std::cout << empty.header.dataLength << '\n';
}

// Blocks for a list's nodes.
void Blocks() {
    CFixedAlloc nodes(24, 64);
    void* const first = nodes.Alloc();
    void* const second = nodes.Alloc();
    nodes.Free(first);
    std::cout << nodes.blockSize << ' ' << nodes.blocksPerPlex << ' ' << (nodes.freeList != nullptr) << ' '
              << (nodes.Alloc() == first) << (second != first) << (nodes.plexChain->data() != nullptr) << '\n';
    nodes.FreeAll();
    CPlex* chain = nullptr;
    CPlex::Create(chain, 8, 16);
    std::cout << (chain->next == nullptr) << '\n';
    chain->FreeDataChain();
}

}  // namespace

int main() {
    Edit();
    WriteThroughBuffer();
    LifeOfABuffer();
    Primitives();
    Blocks();
}
