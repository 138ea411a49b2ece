#include "awake.h"

#include <qt_windows.h>

/// What the thread's state was before; one within another gives it back in the end.
struct StayAwake::Hold
{
    EXECUTION_STATE before = ::SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
};

StayAwake::StayAwake() : m_hold(std::make_unique<Hold>()) {}

StayAwake::~StayAwake()
{
    ::SetThreadExecutionState(m_hold->before == 0 ? ES_CONTINUOUS : m_hold->before | ES_CONTINUOUS);
}
