// The character classes as public strings of Lum::URI.
#include "Source/URI/CharacterClasses.h"

#include <string>

#include <Lum/URI.h>

// An application linked with the static library may read these from its own static initialisers. Nothing else
// fixes the order of theirs and ours. The first priority that is open to programs puts ours before all of ordinary
// priority.
#define LUM_BUILT_FIRST [[gnu::init_priority(101)]]

namespace Lum {

using namespace Internal;

LUM_BUILT_FIRST const std::string URI::URIlowalpha{Classes::URIlowalpha};
LUM_BUILT_FIRST const std::string URI::URIupalpha{Classes::URIupalpha};
LUM_BUILT_FIRST const std::string URI::URIalpha{Classes::URIalpha};
LUM_BUILT_FIRST const std::string URI::URIdigit{Classes::URIdigit};
LUM_BUILT_FIRST const std::string URI::URIalphanum{Classes::URIalphanum};
LUM_BUILT_FIRST const std::string URI::URIreserved{Classes::URIreserved};
LUM_BUILT_FIRST const std::string URI::URImark{Classes::URImark};
LUM_BUILT_FIRST const std::string URI::URIunreserved{Classes::URIunreserved};
LUM_BUILT_FIRST const std::string URI::URIuric{Classes::URIuric};
LUM_BUILT_FIRST const std::string URI::URIhex{Classes::URIhex};
LUM_BUILT_FIRST const std::string URI::URIescaped{Classes::URIescaped};
LUM_BUILT_FIRST const std::string URI::URIspace{Classes::URIspace};
LUM_BUILT_FIRST const std::string URI::URIdelims_real{Classes::URIdelims_real};
LUM_BUILT_FIRST const std::string URI::URIdelims{Classes::URIdelims};
LUM_BUILT_FIRST const std::string URI::URInonhierdelims{Classes::URInonhierdelims};
LUM_BUILT_FIRST const std::string URI::URIunwise{Classes::URIunwise};
LUM_BUILT_FIRST const std::string URI::URIcontrol{Classes::URIcontrol};
LUM_BUILT_FIRST const std::string URI::URIexcluded{Classes::URIexcluded};
LUM_BUILT_FIRST const std::string URI::URIqueryreserved{Classes::URIqueryreserved};
LUM_BUILT_FIRST const std::string URI::URIqueryexcluded{Classes::URIqueryexcluded};
LUM_BUILT_FIRST const std::string URI::URInonhierexcluded{Classes::URInonhierexcluded};

}  // namespace Lum
