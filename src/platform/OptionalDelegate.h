#pragma once

#include <memory>
#include <utility>

/// The one way in which the project asks a delegate whether it answers a call, and calls it.
///
/// A delegate protocol is an abstract class with an `enum class Call`, one value per operation, a
/// pure virtual `answers(Call)`, and its operations as virtual functions with empty bodies. All of
/// them are optional: a delegate overrides those it wants and says so in answers(). Delegates are
/// held weakly.
///
/// Thread: the one of the protocol (all of the project's: main)
namespace OptionalDelegate {

template <class Protocol>
bool answers(const std::weak_ptr<Protocol> &delegate, typename Protocol::Call call)
{
    const std::shared_ptr<Protocol> receiver = delegate.lock();
    return receiver && receiver->answers(call);
}

/// Calls the operation if the delegate is there and answers it; whether it did.
template <class Protocol, class... Parameters, class... Arguments>
bool call(const std::weak_ptr<Protocol> &delegate, typename Protocol::Call call,
          void (Protocol::*operation)(Parameters...), Arguments &&...arguments)
{
    const std::shared_ptr<Protocol> receiver = delegate.lock();
    if (!receiver || !receiver->answers(call))
        return false;
    (receiver.get()->*operation)(std::forward<Arguments>(arguments)...);
    return true;
}

} // namespace OptionalDelegate
