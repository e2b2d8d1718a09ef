#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <boost/json/value.hpp>

#include "foundation/core/Mutex.hpp"
#include "vref/RequestPool.hpp"
#include "vref/RpcMessage.hpp"
#include "vref/RpcMethods.hpp"

namespace reference::tools {

// The requests of a client that speaks version 2: carried out by a pool of threads, answered as
// soon as their results are there, and cancelled when the client does not want them any more.
//
// One thread reads the lines and calls the operations.
class RpcSession {
  public:
    // Writes one message whole. Any thread; must not throw.
    using Send = std::function<void(const boost::json::value& message)>;

    // `methods` must outlive this.
    RpcSession(RpcMethods& methods, Send send);
    // Drops what has not begun, and waits for what has.
    ~RpcSession();
    RpcSession(const RpcSession&) = delete;  // its requests know its place
    RpcSession& operator=(const RpcSession&) = delete;

    // Takes a line of version 2. Waits while there are too many requests before it, so that a
    // client that is faster than its answers is read no faster than these are written.
    void take(const std::string& line);
    // Answers a line that could not be read.
    void refuse(const RpcError& error);

    // Has the documentation read anew before what is taken from now on.
    void readAnew();
    // Runs a task of another version on this thread while no request is carried out.
    void runAlone(const std::function<void()>& task) { m_pool.runAlone(task); }

    // Waits until everything that was taken has been answered.
    void drain() { m_pool.drain(); }
    // Whether the client has asked for the end, and everything has been answered.
    [[nodiscard]] bool isOver() const noexcept { return m_isOver; }

  private:
    class Reply;
    using Number = std::uint64_t;

    // A request that is not answered yet.
    struct Pending {
        boost::json::value id;
        std::shared_ptr<Reply> reply;
        std::size_t slot = 0;
        RequestPool::Lane lane = RequestPool::Lane::Quick;
    };
    // A request as its tasks pass it on.
    struct Work {
        Number number = 0;
        RpcCall call;
        int attempts = 0;
    };

    void begin(RpcRequest request, const std::shared_ptr<Reply>& reply, std::size_t slot);
    [[nodiscard]] Number enter(Pending pending);
    void carryOut(Work work);
    void answer(Number number, boost::json::value result);
    void answer(Number number, const RpcError& error);
    [[nodiscard]] std::optional<Pending> leave(Number number);
    void cancel(const boost::json::value& params);

    RpcMethods& m_methods;
    const Send m_send;
    bool m_isOver = false;

    foundation::core::Mutex m_mutex;
    Number m_lastNumber VELTRA_GUARDED_BY(m_mutex) = 0;
    std::map<Number, Pending> m_pending VELTRA_GUARDED_BY(m_mutex);

    // Last, so that its tasks end first.
    RequestPool m_pool;
};

}  // namespace reference::tools
