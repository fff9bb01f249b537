// The only source file that includes the header with the identifiers' values.
#include "components/ComponentIds.h"

#include <initguid.h>
// The build gives the header's name.
#include ZT_COMPONENT_IDS_HEADER
