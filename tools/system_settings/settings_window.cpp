#include "tools/system_settings/settings_window.h"

#include "ui/face_images.h"
#include "ui/shadow_images.h"
#include "ui/symbol_images.h"

using namespace Qt::StringLiterals;

namespace zorvane::tools
{

SettingsWindow::SettingsWindow(std::filesystem::path folder)
    : m_state(std::move(folder))
    , m_traffic(m_state)
{
    m_engine.addImageProvider(u"symbol"_s, new ui::SymbolImages);
    m_engine.addImageProvider(u"shadow"_s, new ui::ShadowImages);
    m_engine.addImageProvider(u"face"_s, new ui::FaceImages);
    m_engine.setInitialProperties({{u"system"_s, QVariant::fromValue(&m_state)},
        {u"traffic"_s, QVariant::fromValue(&m_traffic)}});
    m_engine.addImportPath(u":/qt/qml"_s);
    m_engine.load(QUrl(u"qrc:/qt/qml/Zorvane/SystemSettings/SettingsWindow.qml"_s));
}

QQuickWindow *SettingsWindow::window() const
{
    const auto roots = m_engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
}

} // namespace zorvane::tools
