// The character classes as public strings of Lum::URI.
#include "Source/URI/CharacterClasses.h"

#include <string>

#include <Lum/URI.h>

// An application linked with the static library may read these from its own static initialisers,
// whose order relative to ours nothing else fixes: the first priority open to programs puts ours
// before every initialiser of ordinary priority.
#define LUM_BUILT_FIRST [[gnu::init_priority(101)]]

namespace Lum {

LUM_BUILT_FIRST const std::string URI::URIlowalpha{Classes::lowalpha};
LUM_BUILT_FIRST const std::string URI::URIupalpha{Classes::upalpha};
LUM_BUILT_FIRST const std::string URI::URIalpha{Classes::alpha};
LUM_BUILT_FIRST const std::string URI::URIdigit{Classes::digit};
LUM_BUILT_FIRST const std::string URI::URIalphanum{Classes::alphanum};
LUM_BUILT_FIRST const std::string URI::URIreserved{Classes::reserved};
LUM_BUILT_FIRST const std::string URI::URImark{Classes::mark};
LUM_BUILT_FIRST const std::string URI::URIunreserved{Classes::unreserved};
LUM_BUILT_FIRST const std::string URI::URIuric{Classes::uric};
LUM_BUILT_FIRST const std::string URI::URIhex{Classes::hex};
LUM_BUILT_FIRST const std::string URI::URIescaped{Classes::escaped};
LUM_BUILT_FIRST const std::string URI::URIspace{Classes::space};
LUM_BUILT_FIRST const std::string URI::URIdelims_real{Classes::delimsReal};
LUM_BUILT_FIRST const std::string URI::URIdelims{Classes::delims};
LUM_BUILT_FIRST const std::string URI::URInonhierdelims{Classes::nonhierdelims};
LUM_BUILT_FIRST const std::string URI::URIunwise{Classes::unwise};
LUM_BUILT_FIRST const std::string URI::URIcontrol{Classes::control};
LUM_BUILT_FIRST const std::string URI::URIexcluded{Classes::excluded};
LUM_BUILT_FIRST const std::string URI::URIqueryreserved{Classes::queryreserved};
LUM_BUILT_FIRST const std::string URI::URIqueryexcluded{Classes::queryexcluded};
LUM_BUILT_FIRST const std::string URI::URInonhierexcluded{Classes::nonhierexcluded};

}  // namespace Lum
