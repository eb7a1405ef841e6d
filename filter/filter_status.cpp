#include "filter/filter_status.h"

namespace zorvane::filter
{

FilterStatus::FilterStatus(Kind kind)
    : m_kind(kind)
{
}

FilterStatus FilterStatus::failed(const QString &message)
{
    FilterStatus status(Kind::Failed);
    status.m_message = message;
    return status;
}

} // namespace zorvane::filter
