#include "tests/platform/embedded_reading.h"

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using zorvane::platform::ByteOrder;

/** The way to the signature: slices and load commands. */
class TestMachO : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choosesTheSlice_data()
    {
        addColumns();
        const SliceForm intel{cpuX86_64, 3, named("intel")};
        const SliceForm arm{cpuArm64, 0, named("arm")};
        const SliceForm variant{cpuArm64, 0x80000002, named("variant")};
        const SliceForm powerPc{cpuPowerPc, 0, named("ppc")};
        const SliceForm unsignedIntel{cpuX86_64, 3, machO()};
        const SliceForm archive{cpuPowerPc, 0, QByteArray("!<arch>\n").leftJustified(64)};

        row("thin file", named("thin"), u"thin"_s);
        row("arm64 behind another slice", universal({{intel, arm}}), u"arm"_s);
        row("arm64 in front", universal({{arm, intel}}), u"arm"_s);
        row("arm64 behind a variant of it", universal({{variant, arm}}), u"arm"_s);
        row("variant of arm64 behind others", universal({{intel, variant}}), u"variant"_s);
        row("first slice where there is no arm64", universal({{powerPc, intel}}), u"ppc"_s);
        row("first slice unsigned", universal({{unsignedIntel, arm}}), u"arm"_s);
        row("first slice no image", universal({{archive, arm}}), notMachO);
        row("chosen slice no image", universal({{intel, {cpuArm64, 0, archive.bytes}}}), damaged);
        row("no counted slice", universal({{intel}, 0xCAFEBABE, 0}), noCode);
        row("arm64 behind the counted slices", universal({{intel, arm}, 0xCAFEBABE, 1}), u"arm"_s);
        row("other slice behind the counted ones", universal({{powerPc, intel}, 0xCAFEBABE, 1}),
            u"ppc"_s);
        row("64-bit universal file", universal({{arm}, 0xCAFEBABF}), notMachO);
        row("universal file of the other byte order", universal({{arm}, 0xBEBAFECA}), notMachO);
        row("100 slices", manySlices(100), u"slice"_s);
        row("101 slices", manySlices(101), noCode);
        row("equal offsets", universal({{intel, {cpuArm64, 0, arm.bytes, 4096}}}), noCode);
        row("chosen slice beyond the end",
            universal({{intel, {cpuArm64, 0, arm.bytes, 0x7FFFFFFF}}}), noCode);
        row("header cut behind the counted slices", universal({{arm}}).left(28), notMachO);
    }
    void choosesTheSlice() { checkRow(); }

    void needsOneEntryMoreThanCounted()
    {
        // Only a slice that overlaps its own entry leaves the file shorter than two entries.
        const QByteArray image = QByteArray("\xCE\xFA\xED\xFE") + number32(7, ByteOrder::Little)
            + number32(8, ByteOrder::Big) + number32(2, ByteOrder::Little) + QByteArray(12, '\0');
        const QByteArray file
            = number32(0xCAFEBABE, ByteOrder::Big) + number32(1, ByteOrder::Big) + image;
        QCOMPARE(readingOf(file.leftJustified(8 + 2 * 20 - 1, '\0')), noCode);
        QCOMPARE(readingOf(file.leftJustified(8 + 2 * 20, '\0')), absent);
    }

    void takesLoadedImagesOnly_data()
    {
        addColumns();
        const QList<std::uint32_t> loaded{2, 5, 6, 7, 8, 11};
        for (std::uint32_t fileType = 0; fileType < 14; ++fileType) {
            const QByteArray name = "file type " + QByteArray::number(fileType);
            row(name.constData(), named("x", {.fileType = fileType}),
                loaded.contains(fileType) ? u"x"_s : notMachO);
        }
        row("32-bit image", named("x", {.is64Bit = false}), u"x"_s);
        row("big-endian image", named("x", {.order = ByteOrder::Big}), u"x"_s);
        row("big-endian 32-bit image",
            named("x", {.is64Bit = false, .order = ByteOrder::Big, .cpuType = cpuPowerPc}), u"x"_s);
        row("empty file", {}, notMachO);
        row("text", "#!/bin/sh\necho hello, this is a text file\n", notMachO);
        row("header cut short", named("x").left(27), notMachO);
        row("universal file inside another",
            universal({{{cpuArm64, 0, universal({{{cpuArm64, 0, named("x")}}})}}}), notMachO);
    }
    void takesLoadedImagesOnly() { checkRow(); }

    void findsTheSignatureCommand_data()
    {
        addColumns();
        const QByteArray sound = signature();
        const auto with = [&](ImageForm form) {
            if (!form.signature)
                form.signature = sound;
            return machO(form);
        };
        const QString x = u"com.example.Tool"_s;
        row("no signature command", machO({.commands = loadCommand(0x19, 72)}), absent);
        row("no commands", machO(), absent);
        row("behind other commands", with({.commands = loadCommand(0x19, 72) + loadCommand(2, 24)}),
            x);
        row("first of two counts", with({.commands = loadCommand(0x1D, 16)}), damaged);
        row("damage behind it does not matter", machO({.signature = sound, .commandsSize = 16}), x);
        row("command of size 0", with({.commands = loadCommand(0x19, 0).leftJustified(8, 0)}),
            damaged);
        row("command of size 7", with({.commands = loadCommand(0x19, 7).leftJustified(8, 0)}),
            damaged);
        row("command beyond the commands",
            with({.commands = loadCommand(0x19, 8), .commandsSize = 15}), damaged);
        row("last command runs past the commands",
            machO({.commands = loadCommand(0x19, 72), .commandsSize = 71}), damaged);
        row("commands beyond the file", machO({.commandsSize = 1}), damaged);
        row("far too many commands", machO({.commandsSize = 0xFFFFFFFF}), damaged);
        row("signature command too short", with({.signatureCommandSize = 12}), damaged);
        row("signature command longer than needed", with({.signatureCommandSize = 24}), x);
        row("data beyond the file", with({.dataOffset = 0xFFFFFF00}), damaged);
        row("data ends beyond the file", with({.dataSize = 0xFFFFFFFF}), damaged);
        row("no data", with({.dataSize = 0}), damaged);
        row("padding behind the super blob", machO({.signature = sound + QByteArray(100, '\0')}),
            x);
    }
    void findsTheSignatureCommand() { checkRow(); }

private:
    static QByteArray manySlices(std::uint32_t count)
    {
        UniversalForm form;
        for (std::uint32_t i = 0; i < count; ++i)
            form.slices.append({cpuX86_64, i, named("slice")});
        return universal(form);
    }
};

QTEST_APPLESS_MAIN(TestMachO)
#include "tst_mach_o.moc"
