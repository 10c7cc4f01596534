// Naming.h - XML names to C++ identifiers: word splitting, reserved words, clash suffixes.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kvxsd {

/// Splits at '-', '.', '_', other non-identifier characters and case changes
/// ("purchaseOrder", "USPrice", "ship-to" -> Purchase Order, US Price, Ship To)
/// and joins the words with an upper-case first letter each. Non-ASCII letters:
/// Latin ones lose their diacritics ("Größe" -> Grosse), any other character is
/// a word of "u" and its code point in hex ("名前" -> U540dU524d).
std::string PascalCase(const std::string& xmlName);
/// Lower-case words joined by '_' ("Purchase-Order" -> purchase_order).
std::string SnakeCase(const std::string& xmlName);
/// A C++ keyword, an alternative token, or a macro common headers define.
bool IsReserved(const std::string& identifier);
/// Any text to a usable identifier: empty -> "Empty", leading digit -> "Value2d",
/// reserved -> trailing '_'.
std::string MakeIdentifier(const std::string& candidate);

/// Names given out in one C++ scope. A clash gets a numeric suffix (never an
/// error); the explicit --rename overrides are applied first.
class NameScope {
public:
    NameScope() = default;
    /// Names taken without a rename record (members of a base class, API names).
    void Reserve(const std::string& name) { m_used.insert(name); }
    bool Contains(const std::string& name) const { return m_used.count(name) != 0; }
    /// The identifier for path: override, or wanted made unique; records a rename
    /// line in renames when the result differs from the plain conversion.
    std::string Assign(const std::string& path, const std::string& wanted,
                       const std::unordered_map<std::string, std::string>& overrides,
                       std::vector<std::string>& renames);

private:
    std::unordered_set<std::string> m_used;
    std::unordered_map<std::string, int> m_nextSuffix;
};

}  // namespace kvxsd
