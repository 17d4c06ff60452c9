#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "VYXPropertyTree.h"
#include "growth/workloads.h"

namespace VYX::Growth {
namespace {

using Keys = std::vector<KORUnicodeString>;

void KeepSorted(Keys&) {}

void Shuffle(Keys& ioKeys) {
  std::mt19937 random(1);
  std::shuffle(ioKeys.begin(), ioKeys.end(), random);
}

void Reverse(Keys& ioKeys) {
  std::reverse(ioKeys.begin(), ioKeys.end());
}

using Order = void (*)(Keys&);

Keys MakeKeys(std::size_t iCount, Order iOrder) {
  Keys keys;
  for (std::size_t number = 0; number < iCount; ++number) {
    char key[32];
    std::snprintf(key, sizeof key, "key %09zu", number);
    keys.emplace_back(key);
  }
  iOrder(keys);
  return keys;
}

KORUnicodeString MakeText(const Keys& iKeys) {
  KORUnicodeString text("{");
  for (const KORUnicodeString& key : iKeys) {
    text.Append(text.GetLengthInByte() == 1 ? "\"" : ",\"").Append(key).Append("\":1");
  }
  return text.Append("}");
}

std::shared_ptr<VYXPropertyTree> MakeTree(std::size_t iSize, Order iOrder) {
  auto tree = std::make_shared<VYXPropertyTree>();
  tree->Parse(MakeText(MakeKeys(iSize, iOrder)));
  return tree;
}

Work Parse(std::size_t iSize, Order iOrder) {
  return [text = MakeText(MakeKeys(iSize, iOrder)), tree = std::make_shared<VYXPropertyTree>()] { tree->Parse(text); };
}

Work Insert(std::size_t iSize, Order iOrder) {
  return [keys = MakeKeys(iSize, iOrder), tree = std::make_shared<VYXPropertyTree>()] {
    for (const KORUnicodeString& key : keys) {
      tree->SetInteger(key, 1);
    }
  };
}

Work Print(std::size_t iSize, Order iOrder) {
  return [tree = MakeTree(iSize, iOrder), text = std::make_shared<KORUnicodeString>()] { tree->Stringify(*text); };
}

Work Copy(std::size_t iSize, Order iOrder) {
  return [tree = MakeTree(iSize, iOrder), copy = std::make_shared<VYXPropertyTree>()] { *copy = *tree; };
}

Work Destroy(std::size_t iSize, Order iOrder) {
  return [tree = std::make_shared<std::unique_ptr<VYXPropertyTree>>(
              std::make_unique<VYXPropertyTree>(*MakeTree(iSize, iOrder)))] { tree->reset(); };
}

}  // namespace

void AddTreeWorkloads(std::map<std::string, Prepare>& ioWorkloads) {
  const std::map<std::string, Order> kOrders = {{"sorted", KeepSorted}, {"shuffled", Shuffle}, {"reversed", Reverse}};
  const std::map<std::string, Work (*)(std::size_t, Order)> kTasks = {
      {"parse", Parse}, {"insert", Insert}, {"print", Print}, {"copy", Copy}, {"destroy", Destroy}};
  for (const auto& [orderName, order] : kOrders) {
    for (const auto& [taskName, task] : kTasks) {
      ioWorkloads[taskName + "-" + orderName] = [task = task, order = order](std::size_t iSize, const std::string&) {
        return task(iSize, order);
      };
    }
  }
}

}  // namespace VYX::Growth
