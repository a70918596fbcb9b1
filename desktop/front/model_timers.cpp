#include "desktop/front/model_timers.h"

namespace tarvik {

ModelTimers::ModelTimers(Front& front) : front_(front)
{
    for (auto& [index, timer] : front.program.form1.Timer1) add(timer);
    for (Timer* timer : front.program.form1.batch_timers()) add(*timer);
}

void ModelTimers::add(Timer& timer)
{
    timers_.push_back(std::make_unique<Running>(timer));
    Running& running = *timers_.back();
    QObject::connect(&running.clock, &QTimer::timeout, &running.clock, [this, &running] { fell_due(running); });
    front_.mirror.add(timer, nullptr, [&running] {
        if (running.clock.interval() != running.timer.interval()) running.clock.setInterval(running.timer.interval());
        if (running.timer.enabled() == running.clock.isActive()) return;
        if (running.timer.enabled()) running.clock.start();
        else running.clock.stop();
    });
}

void ModelTimers::fell_due(Running& running)
{
    if (std::exchange(running.waiting, true)) return;
    front_.queue.submit([this, &running] {
        running.waiting = false;
        if (!running.timer.enabled()) return;
        Event tick{EventKind::Tick, running.timer};
        front_.queue.send(tick);
    });
}

} // namespace tarvik
