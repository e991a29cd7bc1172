// Where 16-bit strings, the transcoder and the texts of URIs meet: above all three, so that none of them
// has to know the others.
#include <string>
#include <string_view>

#include <Lum/CString.h>
#include <Lum/Transcoder.h>
#include <Lum/URI.h>

CString CString::FromUTF8(std::string_view utf8) { return CString(Lum::Transcoder::asUTF16(std::string(utf8))); }

std::string CString::ToUTF8() const { return Lum::Transcoder::asUTF8(std::u16string(*this)); }

namespace Lum {

URI::StringProxy::operator CString() const { return Transcoder::asUTF16(m_Text).c_str(); }

}  // namespace Lum
