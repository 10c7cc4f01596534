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
#include "kvxml/output/StringBuffer.h"
#include "kvxml/output/Encoder.h"
#include "kvxml/output/TextStream.h"
#include "kvxml/output/XmlWriter.h"
#include "kvxml/output/XmlTextWriter.h"
#include "kvxml/output/BinaryStream.h"
#include "kvxml/output/FileTextStream.h"
#include "kvxml/output/KvZip.h"

#include "kvxml/core/FInfoDecl.h"
#include "kvxml/core/EventSink.h"
#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/NamespaceAliasMap.h"
#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlObjectBase.h"
