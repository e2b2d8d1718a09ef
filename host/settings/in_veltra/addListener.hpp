#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

#include "foundation/msg_svc/eventmgr/Connection.hpp"
#include "settings/core/Settings.hpp"
#include "settings/core/SettingsValueChangeEvent.hpp"

namespace settings::in_veltra {

// Calls `listener` with every event of the class Event that happens at `node`, until the connection
// that is returned is destroyed. SettingsValueChangeEvent is the one there is;
// Settings::addListener has the contract. The caller need not keep `node`: its tree does.
//
// Throws what Settings::addListener throws, and core::SettingsException for a null node. Any
// thread.
template <typename Event>
requires std::same_as<Event, core::SettingsValueChangeEvent>
[[nodiscard]] std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(
    const std::shared_ptr<core::Settings>& node, std::function<void(const Event&)> listener) {
    if (!node)
        throw core::SettingsException("There is no setting to listen to; the pointer is null.");
    return node->addListener(std::move(listener));
}

}  // namespace settings::in_veltra
