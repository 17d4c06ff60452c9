#include "catalogue.h"

#include <stdexcept>
#include <utility>

namespace MediaCatalogue {

namespace {

void Require(long iCode) {
  if (iCode < 0) {
    throw std::runtime_error("The catalogue could not be extended; the trace above tells why");
  }
}

VYXPropertyTree TreeOf(const Total& iTotal) {
  VYXPropertyTree tree;
  Require(tree.SetInteger("files", iTotal.files));
  Require(tree.SetInteger("bytes", iTotal.bytes));
  return tree;
}

VYXPropertyTree TreeOf(const FileFacts& iFacts) {
  VYXPropertyTree tree;
  Require(tree.SetInteger("size", iFacts.size));
  Require(tree.SetInteger("lastWriteTime", iFacts.lastWriteTime));
  Require(tree.SetString("crc32", iFacts.crc32));
  Require(tree.SetString("sha256", iFacts.sha256));
  Require(tree.SetString("mediaType", iFacts.mediaType));
  return tree;
}

void Count(Total& ioTotal, std::int64_t iSize) {
  ++ioTotal.files;
  ioTotal.bytes += iSize;
}

}  // namespace

void Catalogue::Add(const KORUnicodeString& iPath, FileFacts iFacts) {
  Count(_all, iFacts.size);
  Count(_byMediaType[iFacts.mediaType], iFacts.size);
  _files.push_back({iPath, std::move(iFacts)});
}

void Catalogue::AddFailure(const KORUnicodeString& iPath, const KORUnicodeString& iReason) {
  Require(_failures.SetString(Readable(iPath), iReason));
  ++_failureCount;
}

VYXPropertyTree Catalogue::ToTree(const KORUnicodeString& iFolder) const {
  VYXPropertyTree files;
  for (const CataloguedFile& file : _files) {
    Require(files.SetPropertyTree(file.path, TreeOf(file.facts)));
  }
  VYXPropertyTree byMediaType;
  for (const auto& [type, total] : _byMediaType) {
    Require(byMediaType.SetPropertyTree(type, TreeOf(total)));
  }
  VYXPropertyTree totals = TreeOf(_all);
  Require(totals.SetInteger("failures", _failureCount));
  Require(totals.SetPropertyTree("byMediaType", std::move(byMediaType)));

  VYXPropertyTree tree;
  Require(tree.SetString("folder", Readable(iFolder)));
  Require(tree.SetPropertyTree("files", std::move(files)));
  Require(tree.SetPropertyTree("failures", _failures));
  Require(tree.SetPropertyTree("totals", std::move(totals)));
  return tree;
}

}  // namespace MediaCatalogue
