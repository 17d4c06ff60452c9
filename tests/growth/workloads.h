#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace VYX::Growth {

/// What is measured, with all that it takes prepared.
using Work = std::function<void()>;

/// Prepares work of a size; the path is that of an archive or a folder of so many entries, for work that reads one.
using Prepare = std::function<Work(std::size_t iSize, const std::string& iPath)>;

/// All workloads by their names.
std::map<std::string, Prepare> Workloads();

/// Those on property trees, in sorted, shuffled and reversed order of their keys.
void AddTreeWorkloads(std::map<std::string, Prepare>& ioWorkloads);

/// Those on texts.
void AddTextWorkloads(std::map<std::string, Prepare>& ioWorkloads);

}  // namespace VYX::Growth
