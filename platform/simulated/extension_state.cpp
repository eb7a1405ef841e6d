#include "platform/simulated/extension_state.h"

#include "platform/simulated/json_file.h"

namespace zorvane::platform::simulated
{

namespace
{

using namespace Qt::StringLiterals;

const QString approvedKey = u"approved"_s;
const QString activeKey = u"active"_s;

} // namespace

ExtensionState readExtensionState(const std::filesystem::path &file)
{
    const QJsonObject object = readJsonFile(file).value_or(QJsonObject());
    return {object.value(approvedKey).toBool(false), object.value(activeKey).toBool(false)};
}

std::optional<QString> writeExtensionState(
    const std::filesystem::path &file, const ExtensionState &state)
{
    return changeJsonFile(file, [&state](QJsonObject &object) {
        object.insert(approvedKey, state.approved);
        object.insert(activeKey, state.active);
    });
}

} // namespace zorvane::platform::simulated
