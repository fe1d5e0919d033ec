// A limit for what the system may never answer: a file server that is gone, a name server that is silent.
#pragma once

#include <chrono>
#include <exception>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

namespace orvane::preflight {

/// What `look` returns; none when that takes longer. It then goes on until the process ends, so it has to own all that
/// it uses. Throws what `look` throws.
template <class Look>
std::optional<std::invoke_result_t<Look&>> within(std::chrono::milliseconds limit, Look look) {
    const auto promise = std::make_shared<std::promise<std::invoke_result_t<Look&>>>();
    auto answer = promise->get_future();
    std::thread thread([promise, look = std::move(look)]() mutable {
        try {
            promise->set_value(look());
        } catch (...) {
            promise->set_exception(std::current_exception());
        }
    });
    if (answer.wait_for(limit) != std::future_status::ready) {
        thread.detach();
        return std::nullopt;
    }
    // Under Wine a thread that starts while another one ends sometimes never runs.
    thread.join();
    return answer.get();
}

} // namespace orvane::preflight
