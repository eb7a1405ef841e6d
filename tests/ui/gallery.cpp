#include "ui/window_fixture.h"

#include <QBuffer>
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QTest>
#include <QTextStream>

/**
 * @file
 * Draws the main window in each of its states, light and dark, for an eye to look over:
 * ui_gallery FOLDER. Not a test; nothing is compared.
 */

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

QByteArray icon(QColor top, QColor bottom)
{
    QImage image(128, 128, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient gradient(0, 0, 0, 128);
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(image.rect().adjusted(8, 8, -8, -8), 25, 25);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "png");
    return bytes;
}

QList<SampleApplication> samples()
{
    return {{u"Atlas Notes"_s, u"org.atlasnotes.desktop"_s, u"7QK2M4X9TP"_s,
                icon(QColor(0xffd46a), QColor(0xf3ab3c))},
        {u"Meadow Player"_s, u"app.meadow.player"_s, u"4H8VJ3CW2N"_s,
            icon(QColor(0x6fd49c), QColor(0x1f8f6a))},
        {u"Quill Mail"_s, u"com.quillworks.mail"_s, u"9D5RB6LZ1Y"_s, std::nullopt}};
}

class Gallery
{
public:
    explicit Gallery(const QString &folder)
        : m_folder(folder)
    {
    }

    void draw()
    {
        for (const bool dark : {false, true}) {
            QPalette palette;
            palette.setColor(QPalette::Window, dark ? QColor(0x28282a) : QColor(0xececec));
            QGuiApplication::setPalette(palette);
            m_suffix = dark ? u"-dark.png"_s : u"-light.png"_s;
            drawStates();
            // Alone, because the keys of one program's commands work in all of its windows.
            drawOtherWindows();
        }
    }

private:
    void save(WindowFixture &fixture, const QString &name)
    {
        // Everything that moves has come to rest by then.
        QTest::qWait(450);
        fixture.window()->grabWindow().save(m_folder.filePath(name + m_suffix));
        QTextStream(stdout) << name << m_suffix << Qt::endl;
    }

    void drawStates();
    void drawExceptions();
    void drawOtherWindows();

    QDir m_folder;
    QString m_suffix;
};

void Gallery::drawStates()
{
    WindowFixture listed(samples());
    listed.enable();
    save(listed, u"01-main"_s);
    listed.store->setDropTargeted(true);
    save(listed, u"03-drop-hovering"_s);
    listed.store->setDropTargeted(false);
    listed.store->addApplication(QUrl::fromLocalFile(u"/Users/someone/Unsigned.app"_s));
    save(listed, u"04-adding"_s);
    listed.window()->resize(680, 560 + WindowFixture::menuBarHeight);
    save(listed, u"16-minimum-size"_s);

    WindowFixture empty;
    save(empty, u"02-empty"_s);

    WindowFixture early(samples(), false, {}, ListRead::WhenTold);
    save(early, u"21-list-not-read-yet"_s);
    drawExceptions();
}

void Gallery::drawExceptions()
{
    WindowFixture first({}, true);
    first.requireInstallation();
    first.ui->onboarding().close();
    first.ui->onboarding().show();
    save(first, u"10-onboarding-first"_s);
    for (int page = 1; page < first.ui->onboarding().steps().size(); ++page)
        QTest::keyClick(first.window(), Qt::Key_Return);
    save(first, u"11-onboarding-last"_s);

    WindowFixture misplaced(samples());
    misplaced.requireInstallation();
    save(misplaced, u"05-installation-required"_s);
    misplaced.store->explainProtectionUnavailable();
    save(misplaced, u"09-alert"_s);

    WindowFixture waiting(samples());
    waiting.awaitApproval();
    save(waiting, u"06-awaiting-approval"_s);

    WindowFixture updated(samples());
    updated.enable();
    updated.platform.manifestFetcher.answers = {zorvane::platform::ManifestResponse{200,
        "{\"version\":\"1.3\",\"downloadURL\":\"https://kestrelworks.dev/\","
        "\"releaseNotes\":\"Faster discovery of helpers and a calmer list.\"}"}};
    updated.store->checkForUpdates(false);
    updated.settle();
    save(updated, u"07-update"_s);

    WindowFixture failed(samples());
    failed.fail(u"Restart your Mac to finish installing the extension."_s);
    save(failed, u"08-failed"_s);
}

void Gallery::drawOtherWindows()
{
    WindowFixture current;
    current.platform.mainBundle.version = u"1.2"_s;
    current.platform.mainBundle.build = u"7"_s;
    current.enable();
    QTest::keyClick(current.window(), Qt::Key_F10);
    QTest::keyClick(current.window(), Qt::Key_Down);
    save(current, u"18-menu"_s);
    QTest::keyClick(current.window(), Qt::Key_Escape);
    current.openSettings();
    current.checkForUpdates(u"1.2"_s);
    save(current, u"12-settings"_s);
    current.checkForUpdates(u"1.3"_s);
    save(current, u"13-settings-update"_s);
    current.requireInstallation();
    current.store->explainProtectionUnavailable();
    save(current, u"19-settings-alert"_s);
    current.ui->otherWindows().showAbout();
    current.turnTo(current.ui->otherWindows().about());
    save(current, u"20-about"_s);
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    if (QGuiApplication::arguments().size() != 2) {
        QTextStream(stderr) << "usage: ui_gallery FOLDER\n";
        return 2;
    }
    const auto folder = QGuiApplication::arguments().at(1);
    if (!QDir().mkpath(folder))
        return 1;
    Gallery(folder).draw();
    return 0;
}
