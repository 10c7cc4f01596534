// Options.h - the command line of kvxsd, shared by the front end and the emitter.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kvxsd {

struct Options {
    std::vector<std::string> schemas;      ///< main schema files, in command-line order
    std::string outDir = ".";              ///< -o
    std::string cppNamespace;              ///< --namespace; empty: derived from each file name
    std::vector<std::string> includeDirs;  ///< -I, searched after the including file's folder
    std::string catalog;                   ///< --catalog FILE
    bool keepGoing = false;                ///< --keep-going: report every error
    bool explainNames = false;             ///< --explain-names
    /// --rename PATH=Name, e.g. "po.xsd#/item/USPrice=Price" or "ItemType=Item".
    std::vector<std::pair<std::string, std::string>> renames;
    /// --namespace-map URI=NAME: the C++ namespace of the schemas whose target namespace is URI.
    std::vector<std::pair<std::string, std::string>> namespaceMap;
    /// --depfile FILE: after success, a Makefile rule from the outputs to every schema read.
    std::string depfile;
};

}  // namespace kvxsd
