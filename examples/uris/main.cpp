// URIs: the pages of a search, and local files as addresses.

#include <iostream>

#include "VYXInfStringUtil.h"
#include "VYXInfUri.h"

/// The address of the page behind the one of iUri; the first page where it names none.
static KORUnicodeString NextPage(VYXInfUri iUri) {
  const KORUnicodeString page = iUri.GetQuery("page");
  const int number = page.IsEmpty() ? 0 : std::stoi(page.ConvertToChar());
  if (iUri.TrySetQuery("page", KORUnicodeString(std::to_string(number + 1))) < 0) {
    iUri.SetQuery("page=1");  // a parameter is set in a query only, so begin one
  }
  return iUri.GetString();
}

int main() {
  VYXInfUri search("https://example.com:8443/find?page=2#top");
  search.SetQuery("q", VYXInfStringUtil::EncodeURIComponent("fjord & harbour"));
  std::cout << search.GetString() << "\n" << NextPage(search) << "\n";
  std::cout << VYXInfStringUtil::DecodeURIComponent(search.GetQuery("q")) << " at " << search.GetHost() << ", port "
            << search.GetPort() << "\n";

  const VYXInfUri file = VYXInfUri::FromLocalPath("C:\\photos\\fjord.jpg");
  KORUnicodeString path;
  if (file.ToLocalPath(path) < 0) {
    return 1;
  }
  std::cout << file.GetString() << " is " << path << "\n";

  VYXInfUri wrong;
  if (wrong.TrySet("http://example.com:eighty/") < 0) {
    std::cout << "no address; " << (wrong.IsEmpty() ? "nothing was stored\n" : "a part was stored\n");
  }
  return 0;
}
