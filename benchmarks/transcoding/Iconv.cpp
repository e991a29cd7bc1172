// iconv: the C library's converters, open all the time.
#include <iconv.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "Case.h"
#include "transcoding/TranscodingFamily.h"

namespace Bench::Transcoding {
namespace {

class Converter {
public:
    Converter(const std::string& from, const std::string& to) : m_Converter(iconv_open(to.c_str(), from.c_str())) {
        if (m_Converter == reinterpret_cast<iconv_t>(-1)) {
            throw std::runtime_error("iconv: no converter from " + from + " to " + to);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() { iconv_close(m_Converter); }

    /// A fresh text of at most `most` bytes, in a buffer that is not cleared.
    std::unique_ptr<char[]> Convert(const void* bytes, std::size_t size, std::size_t most) {
        std::unique_ptr<char[]> result(new char[most]);
        Convert(bytes, size, result.get(), most);
        return result;
    }
    /// Returns the end of the text.
    char* Convert(const void* bytes, std::size_t size, char* to, std::size_t most) {
        char* from = static_cast<char*>(const_cast<void*>(bytes));
        if (iconv(m_Converter, &from, &size, &to, &most) != 0 ||
            iconv(m_Converter, nullptr, nullptr, &to, &most) != 0) {
            throw std::runtime_error("iconv: a text cannot be converted");
        }
        return to;
    }

private:
    iconv_t m_Converter;
};

void AddBoth(const std::string& name, const std::string& encoding, const auto& c, std::size_t mostBytesPerUnit) {
    const auto toWide = std::make_shared<Converter>(encoding, "utf-16le");
    AddCase(c.toWide, name, c.narrow, [toWide](const std::string& bytes) {
        return toWide->Convert(bytes.data(), bytes.size(), bytes.size() * 2);
    });
    const auto fromWide = std::make_shared<Converter>("utf-16le", encoding);
    AddCase(c.fromWide, name, c.wide, [fromWide, mostBytesPerUnit](const std::u16string& wide) {
        return fromWide->Convert(wide.data(), wide.size() * 2, wide.size() * mostBytesPerUnit + 8);
    });
    AddCase(c.toWide + kIntoBuffer, name, c.narrow,
            [toWide, buffer = BufferFor<char>(c.narrow, 2)](const std::string& bytes) mutable {
                return toWide->Convert(bytes.data(), bytes.size(), buffer.data(), buffer.size());
            });
    AddCase(c.fromWide + kIntoBuffer, name, c.wide,
            [fromWide, buffer = BufferFor<char>(c.wide, mostBytesPerUnit)](const std::u16string& wide) mutable {
                return fromWide->Convert(wide.data(), wide.size() * 2, buffer.data(), buffer.size());
            });
}

void AddCases(const std::string& name, const Inputs& inputs) {
    for (const UnicodeCase& c : inputs.unicode) {
        AddBoth(name, "utf-8", c, 3);
    }
    for (const EncodingCase& c : inputs.encodings) {
        AddBoth(name, c.encoding, c, 8);
    }
}

const AddSubject add{{"iconv", AddCases}};

}  // namespace
}  // namespace Bench::Transcoding
