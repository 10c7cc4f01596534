// ValueTypes.h - the type a text value can take in binary form without changing its text.
#pragma once

#include <string_view>

#include "kvxml/values/ItemType.h"

namespace kvxml_cli {

/// A type whose suggested Fast Infoset encoding gives back exactly `text`:
/// i4 or i8 for canonical integers, boolean for "true"/"false", decimal or
/// integer (numeric alphabet) for other numbers, datetime (date and time
/// alphabet) for dates and times; string for everything else.
KvXmlLib10::ItemType InferItemType(std::string_view text);

}  // namespace kvxml_cli
