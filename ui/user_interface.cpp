#include "ui/user_interface.h"

#include "ui/application_images.h"
#include "ui/documents.h"
#include "ui/face_images.h"
#include "ui/shadow_images.h"
#include "ui/symbol_images.h"
#include "ui/system_pictures.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

namespace
{

/** For the desktop's bars. The system's own idea of it comes first; not every system has one. */
void provideIcon()
{
    if (QGuiApplication::windowIcon().isNull() && ownIconOfSystem({1, 1}).isNull())
        QGuiApplication::setWindowIcon(QIcon(u":/qt/qml/Zorvane/Ui/icons/appicon.svg"_s));
}

/**
 * Makes one of the windows' own fonts the program's: Qt opens that beside every other. Also reads
 * the system's catalogue of fonts, for which the first text would wait otherwise.
 */
void provideFont()
{
    const auto family = u"Inter"_s;
    if (!QFontDatabase::hasFamily(family))
        return;
    QFont font(family);
    font.setPixelSize(11);
    font.setHintingPreference(QFont::PreferNoHinting);
    QGuiApplication::setFont(font);
}

} // namespace

UserInterface::UserInterface(
    app::AppBlockStore &store, platform::Platform &platform, const DesktopConventions &conventions)
    : m_store(store)
    , m_conventions(conventions)
    , m_applications(store)
    , m_system(*platform.actions, *platform.motion)
    , m_onboarding(store, *platform.preferences)
    , m_otherWindows(m_engine, store)
{
    QGuiApplication::setQuitOnLastWindowClosed(conventions.endsWithMainWindow);
    load();
    if (const auto *const main = window())
        connect(main, &QWindow::visibleChanged, this, &UserInterface::followVisibility);
    // Not the window's own activation: that is announced again and again while it stays active.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &UserInterface::followState);
}

UserInterface::~UserInterface()
{
    // It hides as it is destroyed, and the other windows are gone before that.
    if (const auto *const main = window())
        main->disconnect(this);
}

void UserInterface::load()
{
    m_engine.addImportPath(u"qrc:/qt/qml"_s);
    m_engine.addImageProvider(u"application"_s, new ApplicationImages(m_store));
    m_engine.addImageProvider(u"symbol"_s, new SymbolImages);
    m_engine.addImageProvider(u"shadow"_s, new ShadowImages);
    m_engine.addImageProvider(u"face"_s, new FaceImages);
    // The engine reads the views on a thread of its own meanwhile.
    const auto document = u"MainWindow"_s;
    const QQmlComponent ahead(&m_engine, documentAddress(document), QQmlComponent::Asynchronous);
    provideFont();
    m_window = buildWindow(m_engine, document,
        {{u"store"_s, QVariant::fromValue(&m_store)},
            {u"applications"_s, QVariant::fromValue(&m_applications)},
            {u"system"_s, QVariant::fromValue(&m_system)},
            {u"onboarding"_s, QVariant::fromValue(&m_onboarding)},
            {u"otherWindows"_s, QVariant::fromValue(&m_otherWindows)}});
}

QQuickWindow *UserInterface::window() const
{
    return m_window.get();
}

void UserInterface::show()
{
    auto *const main = window();
    if (main == nullptr)
        return;
    main->show();
    // While the desktop makes room for the window.
    QTimer::singleShot(0, this, provideIcon);
}

void UserInterface::bringForward()
{
    if (auto *const main = window())
        ui::bringForward(*main);
}

void UserInterface::followVisibility(bool visible)
{
    if (visible) {
        m_conventions.frameMainWindow(*window());
        m_onboarding.mainWindowAppeared();
        return;
    }
    // The guide is made anew for how things stand when the window comes back.
    m_onboarding.close();
    if (m_conventions.endsWithMainWindow)
        m_otherWindows.close();
}

/** The same state may be announced again: to a program without a window, when it is called up. */
void UserInterface::followState(Qt::ApplicationState state)
{
    const bool wasActive = m_isActive;
    m_isActive = state == Qt::ApplicationActive;
    if (!m_isActive)
        return;
    const bool hasWindow
        = m_otherWindows.isAnyVisible() || (window() != nullptr && window()->isVisible());
    if (!hasWindow && !m_conventions.endsWithMainWindow)
        bringForward();
    if (!wasActive)
        m_store.refreshProtection();
}

} // namespace zorvane::ui
