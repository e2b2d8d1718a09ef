#pragma once

#include <functional>

#include <boost/json/value.hpp>

#include "vref/RequestPool.hpp"

namespace reference::tools {

// A request whose parameters are right.
struct RpcCall {
    RequestPool::Lane lane = RequestPool::Lane::Quick;
    // Returns the result. Throws RpcError, and what the library throws. Runs on a thread of the
    // pool; it may be called again where its result is in doubt.
    std::function<boost::json::value()> run;
};

}  // namespace reference::tools
