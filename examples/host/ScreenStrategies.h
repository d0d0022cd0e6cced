#pragma once

#include "host/ScreenStrategy.h"

#include <memory>
#include <vector>

namespace tessara::demo {

// The strategies of this build, asked in order; the form strategy comes last because the SDK
// shows every step type it does not know otherwise as a form.
class ScreenStrategies {
public:
    // The standard set: the calculator, the step kinds without a screen yet, then forms.
    static ScreenStrategies standard();

    void add(std::unique_ptr<ScreenStrategy> strategy) { strategies_.push_back(std::move(strategy)); }

    // The strategy for steps of `type`; null when none handles it.
    ScreenStrategy* strategyFor(const QString& type) const;
    // True when the autopilot can drive steps of `type`.
    bool drives(const QString& type) const;

private:
    std::vector<std::unique_ptr<ScreenStrategy>> strategies_;
};

} // namespace tessara::demo
