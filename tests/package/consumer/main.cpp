// A program of somebody who has only the installed package: one query, against the documentation
// that is installed with the library.

#include <cstddef>
#include <fl/i18n/utf.hpp>
#include <iostream>
#include <reference/api/ReferenceDataRetriever.hpp>
#include <reference/api/ReferenceRequest.hpp>
#include <reference/api/comparator/CompoundReferenceComparator.hpp>
#include <reference/api/comparator/IndexOrderComparator.hpp>

int main() {
    using namespace reference::api;

    ReferenceRequest request(u"filter");
    request.setRefRequestComparator(
        comparator::CompoundReferenceComparator({comparator::IndexOrderComparator()}));
    const ReferenceDataRetriever retriever(request);
    std::size_t count = 0;
    for (const ReferenceData& result : retriever.getReferenceData()) {
        ++count;
        std::cout << fl::i18n::toUtf8(result.getHeaderInfo().getShortName()) << ' '
                  << fl::i18n::toUtf8(result.getRefItem().getHref()) << '\n';
    }
    return count == 3 ? 0 : 1;
}
