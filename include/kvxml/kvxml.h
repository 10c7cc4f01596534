// kvxml.h - the whole public interface of the kvxml library.
#pragma once

#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/CriticalSection.h"
#include "kvxml/foundation/InstanceMonitor.h"

#include "kvxml/values/ItemType.h"
#include "kvxml/values/UnicodeConversion.h"
#include "kvxml/values/Base64.h"
#include "kvxml/values/BinaryData.h"

#include "kvxml/output/OutputEnums.h"
