#pragma once

#include <memory>

/// While one of these lives the PC does not go to sleep by itself. A nicety: where the system knows no such thing, or
/// refuses it, nothing is said and nothing waits.
class StayAwake
{
public:
    StayAwake();
    ~StayAwake();
    StayAwake(const StayAwake &) = delete;
    StayAwake &operator=(const StayAwake &) = delete;

private:
    struct Hold;
    std::unique_ptr<Hold> m_hold;
};
