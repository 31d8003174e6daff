#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "descriptor.h"
#include "http_message.h"

namespace quenchly::demo {

/// One client: its request comes in, the answer goes out, and what else the client sends is read past, so that it gets
/// the answer instead of a reset.
class HttpConnection {
public:
    using Clock = std::chrono::steady_clock;

    /// `socket` does not block.
    HttpConnection(Descriptor socket, Clock::time_point now);

    int descriptor() const { return socket_.number(); }
    /// The events of poll(2) that it waits for.
    short events() const;
    bool isOver() const { return phase_ == Phase::over; }

    /// Goes on as far as it can without waiting.
    void proceed(const std::function<HttpResponse(const HttpRequest&)>& handler);
    /// Ends it when its time is up.
    void expire(Clock::time_point now);

private:
    enum class Phase { receiving, sending, finishing, over };

    void receive(const std::function<HttpResponse(const HttpRequest&)>& handler);
    void answer(const std::function<HttpResponse(const HttpRequest&)>& handler);
    void send();
    void readPast();

    Descriptor socket_;
    Clock::time_point deadline_;
    Phase phase_ = Phase::receiving;
    std::string received_;
    std::string toSend_;
    std::size_t sent_ = 0;
    std::size_t readPast_ = 0;
};

}  // namespace quenchly::demo
