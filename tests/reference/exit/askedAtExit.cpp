// A plugin that uses the library: loaded with dlopen, and asked when the static objects that it and
// the library have are gone, if they ever go.
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"

using namespace reference;

// Whether the library still answers as it does while main() runs.
extern "C" __attribute__((visibility("default"))) bool answersRightly() {
    const auto resultOf = [](std::u16string folder) {
        return api::ReferenceData(
            property::HeaderInfo(u"f.json", std::move(folder), u"p", u"P", u"1"), {});
    };
    const api::comparator::PreferredOrderComparator goesBefore;
    if (!goesBefore(resultOf(u"veltra"), resultOf(u"brisk")) ||
        !goesBefore(resultOf(u"pendrake"), resultOf(u"brisk")))
        return false;
    // A set of eleven products is installed with the library.
    api::ReferenceRequest request(u"FILTER");
    request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
    request.setRefRequestComparator(goesBefore);
    const auto results = api::ReferenceDataRetriever(request).getReferenceData();
    return results.size() >= 2;
}
