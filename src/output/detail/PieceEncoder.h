// PieceEncoder.h - local code page text held in pieces, encoded as UTF-8 without joining it first.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "kvxml/values/BinaryData.h"

namespace KvXmlLib10 {
namespace detail {

/// The same bytes CEncoder::LocalCodePageToUtf8Binary gives for the pieces
/// joined; `length` is their total length.
CBinaryData LocalPiecesToUtf8Binary(const std::vector<std::string_view>& pieces, std::size_t length);

}  // namespace detail
}  // namespace KvXmlLib10
