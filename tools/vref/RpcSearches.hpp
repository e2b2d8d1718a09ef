#pragma once

#include <string>
#include <vector>

#include "vref/Documentation.hpp"
#include "vref/RpcCall.hpp"
#include "vref/RpcParameters.hpp"

// The methods of version 2 that look something up. Each reads its parameters, and throws RpcError
// where one is wrong. `documentation` must outlive the call. The products that a request prefers go
// before those of `usuallyPrefer`, and these before others.
namespace reference::tools {

// At most so many hits, or completions, are returned.
inline constexpr std::size_t maxHits = 1000;

// What a question finds.
[[nodiscard]] RpcCall prepareAsk(RpcParameters& parameters, const Documentation& documentation,
                                 const std::vector<std::string>& usuallyPrefer);

// What a request of the library finds: the options of "vref find --exact".
[[nodiscard]] RpcCall prepareFind(RpcParameters& parameters, const Documentation& documentation);

// One entry, and its manual page as text.
[[nodiscard]] RpcCall prepareShow(RpcParameters& parameters, const Documentation& documentation,
                                  const std::vector<std::string>& usuallyPrefer);

// How the beginning of a name goes on.
[[nodiscard]] RpcCall prepareComplete(RpcParameters& parameters, const Documentation& documentation,
                                      const std::vector<std::string>& usuallyPrefer);

}  // namespace reference::tools
