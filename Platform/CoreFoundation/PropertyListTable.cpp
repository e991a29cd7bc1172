// Reads tables that are property lists, with libplist. libplist trusts a list: it copies shared parts as often
// as they are referred to, and follows nested parts to any depth. So every list is checked first, and only a
// list that is one dictionary of strings is passed to libplist.
#include <plist/plist.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "Platform/CoreFoundation/StringTable.h"

using namespace Lum::Internal;

namespace Lum::Internal::CoreFoundation {
namespace {

struct FreePlist {
    void operator()(void* node) const noexcept { plist_free(node); }
};
struct FreeMemory {
    void operator()(void* memory) const noexcept { std::free(memory); }
};
template <typename T>
using OwnedMemory = std::unique_ptr<T, FreeMemory>;

/// False if a text is not valid.
bool AddEntries(plist_t dictionary, StringTable& table) {
    plist_dict_iter rawIterator = nullptr;
    plist_dict_new_iter(dictionary, &rawIterator);
    const OwnedMemory<void> iterator(rawIterator);
    for (;;) {
        char* rawKey = nullptr;
        plist_t node = nullptr;
        plist_dict_next_item(dictionary, iterator.get(), &rawKey, &node);
        const OwnedMemory<char> key(rawKey);
        if (node == nullptr) {
            return true;
        }
        std::uint64_t size = 0;
        const char* const text = plist_get_string_ptr(node, &size);
        if (key == nullptr || text == nullptr) {
            throw std::bad_alloc();  // the only reason, for a dictionary of strings
        }
        const auto keyUnits = DecodeUtf8(key.get());
        const auto units = DecodeUtf8({text, static_cast<std::size_t>(size)});
        if (!keyUnits || !units) {
            return false;
        }
        table.Add(*keyUnits, *units);
    }
}

/// `read` is a function of libplist. What it returns, from 2.3 on, says no more than the list itself.
template <class Read>
std::string ReadChecked(Read read, std::string_view bytes, StringTable& table) {
    if (bytes.size() > kMostTableBytes / 2) {
        return "larger than any property list of strings";
    }
    plist_t raw = nullptr;
    read(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &raw);
    const std::unique_ptr<void, FreePlist> list(raw);
    if (list == nullptr || plist_get_node_type(list.get()) != PLIST_DICT) {
        return "a property list that cannot be read";
    }
    return AddEntries(list.get(), table) ? "" : "a string of the property list is not valid text";
}

}  // namespace

std::string ReadXmlTable(std::string_view bytes, StringTable& table) {
    const std::string problem = CheckXmlList(bytes);
    return problem.empty() ? ReadChecked(plist_from_xml, bytes, table) : problem;
}

std::string ReadBinaryTable(std::string_view bytes, StringTable& table) {
    const char* const problem = CheckBinaryList(bytes);
    return problem == nullptr ? ReadChecked(plist_from_bin, bytes, table) : problem;
}

}  // namespace Lum::Internal::CoreFoundation
