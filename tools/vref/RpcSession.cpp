#include "vref/RpcSession.hpp"

#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "vref/RpcParameters.hpp"

namespace reference::tools {

namespace json = boost::json;
using foundation::core::MutexLock;

namespace {

using Lane = RequestPool::Lane;

// If a product is replaced for the second time while a request is carried out, its files may be
// gone; the request is then repeated. More than a few times in a row is no accident.
constexpr int mostAttempts = 3;

// What a call came to.
struct Outcome {
    json::value result;
    std::optional<RpcError> error = std::nullopt;
    // Files could not be read meanwhile.
    bool isDoubtful = false;
};

Outcome outcomeOf(const RpcCall& call, const RpcMethods& methods) {
    const std::size_t unreadable = methods.unreadableFiles();
    Outcome outcome;
    try {
        outcome.result = call.run();
    } catch (const RpcError& error) {
        outcome.error = error;
        outcome.isDoubtful = error.code() == RpcCode::UnreadableDocumentation;
    } catch (const std::bad_alloc&) {
        outcome.error = RpcError::internal("There is not enough memory to answer this.");
    } catch (const std::exception& error) {
        outcome.error = RpcError::internal(error.what());
        outcome.isDoubtful = true;
    }
    if (methods.unreadableFiles() != unreadable)
        outcome.isDoubtful = true;
    return outcome;
}

}  // namespace

// The answers to one line: sent once all are there. Any thread.
class RpcSession::Reply {
  public:
    // `size`: the answers of a list; nothing for a request that stands alone.
    Reply(const Send& send, std::optional<std::size_t> size)
        : m_send(send),
          m_isBatch(size.has_value()),
          m_answers(size.value_or(1)),
          m_missing(size.value_or(1)) {}

    void put(std::size_t slot, json::object answer) {
        {
            const MutexLock lock(m_mutex);
            m_answers[slot] = std::move(answer);
            if (--m_missing > 0)
                return;
        }
        // Nobody else touches the answers any more.
        if (m_isBatch)
            m_send(m_answers);
        else
            m_send(m_answers[0]);
    }

  private:
    const Send& m_send;
    const bool m_isBatch;
    foundation::core::Mutex m_mutex;
    json::array m_answers;
    std::size_t m_missing VELTRA_GUARDED_BY(m_mutex);
};

RpcSession::RpcSession(RpcMethods& methods, Send send)
    : m_methods(methods), m_send(std::move(send)) {}

RpcSession::~RpcSession() = default;

void RpcSession::take(const std::string& text) {
    RpcLine line = parseRpcLine(text);
    const auto isAnswered = [](const RpcMessage& message) {
        const auto* const request = std::get_if<RpcRequest>(&message);
        return request == nullptr || request->id;
    };
    const auto answers = static_cast<std::size_t>(std::ranges::count_if(line.messages, isAnswered));
    const auto reply =
        std::make_shared<Reply>(m_send, line.isBatch ? std::optional(answers) : std::nullopt);
    std::vector<Number> shutdowns;
    std::size_t slot = 0;
    for (RpcMessage& message : line.messages) {
        const std::size_t own = isAnswered(message) ? slot++ : slot;
        if (auto* const refusal = std::get_if<RpcRefusal>(&message)) {
            reply->put(own, rpcError(std::move(refusal->id), refusal->error));
            continue;
        }
        auto& request = std::get<RpcRequest>(message);
        if (request.method == shutdownMethod) {
            m_isOver = true;
            if (request.id)
                shutdowns.push_back(enter({.id = *request.id, .reply = reply, .slot = own}));
        } else {
            begin(std::move(request), reply, own);
        }
    }
    if (m_isOver)
        m_pool.drain();
    for (const Number shutdown : shutdowns)
        answer(shutdown, json::value());
}

void RpcSession::refuse(const RpcError& error) {
    m_send(rpcError({}, error));
}

void RpcSession::readAnew() {
    m_pool.add(Lane::Alone, 0, [this] { m_methods.readAnew(); });
}

void RpcSession::begin(RpcRequest request, const std::shared_ptr<Reply>& reply, std::size_t slot) {
    if (request.method == cancelMethod) {
        cancel(request.params);
        if (request.id)
            reply->put(slot, rpcResult(std::move(*request.id), nullptr));
        return;
    }
    RpcCall call;
    try {
        call = m_methods.prepare(request.method, request.params);
    } catch (const RpcError& error) {
        if (request.id)
            reply->put(slot, rpcError(std::move(*request.id), error));
        return;
    }
    const Lane lane = call.lane;
    // A result that nobody wants to know is not worked out; a change is made all the same.
    if (!request.id && lane != Lane::Alone)
        return;
    const Number number = enter(
        request.id
            ? Pending{.id = std::move(*request.id), .reply = reply, .slot = slot, .lane = lane}
            : Pending{.lane = lane});
    m_pool.add(lane, number,
               [this, work = Work{.number = number, .call = std::move(call)}] { carryOut(work); });
}

RpcSession::Number RpcSession::enter(Pending pending) {
    const MutexLock lock(m_mutex);
    m_pending.emplace(++m_lastNumber, std::move(pending));
    return m_lastNumber;
}

void RpcSession::carryOut(Work work) {
    const std::uint64_t edition = m_methods.edition();
    ++work.attempts;
    Outcome outcome = outcomeOf(work.call, m_methods);
    const auto send = [this, number = work.number](const Outcome& known) {
        if (known.error)
            answer(number, *known.error);
        else
            answer(number, known.result);
    };
    if (!outcome.isDoubtful || work.attempts == mostAttempts || work.call.lane == Lane::Alone) {
        send(outcome);
        return;
    }
    // Whether the documentation was replaced meanwhile shows while nothing else runs.
    m_pool.addFromTask(
        Lane::Alone, work.number, [this, work, edition, send, outcome = std::move(outcome)] {
            m_methods.followDocumentation();
            if (m_methods.edition() == edition)
                send(outcome);
            else
                m_pool.addFromTask(work.call.lane, work.number, [this, work] { carryOut(work); });
        });
}

void RpcSession::answer(Number number, json::value result) {
    if (auto pending = leave(number); pending && pending->reply)
        pending->reply->put(pending->slot, rpcResult(std::move(pending->id), std::move(result)));
}

void RpcSession::answer(Number number, const RpcError& error) {
    if (auto pending = leave(number); pending && pending->reply)
        pending->reply->put(pending->slot, rpcError(std::move(pending->id), error));
}

std::optional<RpcSession::Pending> RpcSession::leave(Number number) {
    const MutexLock lock(m_mutex);
    const auto found = m_pending.find(number);
    if (found == m_pending.end())
        return std::nullopt;
    std::optional<Pending> pending(std::move(found->second));
    m_pending.erase(found);
    return pending;
}

// A request that has not begun is taken out; the result of one that has is dropped when it comes. A
// change that has begun is made, and its answer tells so.
void RpcSession::cancel(const json::value& params) {
    const json::value* const id =
        params.is_object() ? params.get_object().if_contains("id") : nullptr;
    if (id == nullptr)
        return;
    std::vector<std::pair<Number, Lane>> meant;
    {
        const MutexLock lock(m_mutex);
        for (const auto& [number, pending] : m_pending)
            if (pending.reply && pending.id == *id)
                meant.emplace_back(number, pending.lane);
    }
    for (const auto& [number, lane] : meant)
        if (m_pool.remove(number) || lane != Lane::Alone)
            answer(number, RpcError::cancelled());
}

}  // namespace reference::tools
