// The identifiers' values, for the stand-ins.
#include "components/ComponentIds.h"

#include <initguid.h>
#include "installation/ids/DevelopmentComponentIds.h"
