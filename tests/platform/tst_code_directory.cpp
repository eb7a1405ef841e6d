#include "tests/platform/embedded_reading.h"

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

/** What a code directory has to fulfil. */
class TestCodeDirectory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checksTheCodeDirectory_data()
    {
        addColumns();
        const QString x = u"com.example.Tool"_s;
        const auto length = static_cast<std::uint32_t>(codeDirectory().size());
        const auto with = [](const DirectoryForm &form) { return programWith(signature(form)); };
        row("wrong magic", with({.magic = 0xFADE0C01}), damaged);
        row("version too old", with({.version = 0x20000}), damaged);
        row("oldest version", with({.version = 0x20001}), x);
        row("newest version", with({.version = 0x2F000}), x);
        row("version too new", with({.version = 0x2F001}), damaged);
        row("length beyond the blob", with({.length = 100000}), damaged);
        row("length cuts the fields", with({.length = 43}), damaged);
        row("length 0", with({.length = 0}), damaged);
        row("empty identifier", with({.identifier = ""}), QString());
        row("long identifier", with({.identifier = QByteArray(100000, 'x')}),
            QString(100000, u'x'));
        row("identifier longer than any real one",
            with({.identifier = QByteArray(qsizetype{2} << 20, 'x')}), damaged);
        row("identifier with a letter beyond ASCII", with({.identifier = "caf\xC3\xA9"}),
            u"café"_s);
        row("identifier no UTF-8", with({.identifier = "caf\xE9"}), damaged);
        row("identifier out of range", with({.identifierOffset = 100000}), damaged);
        row("identifier at the very end", with({.identifierOffset = length}), damaged);
        row("identifier without its end",
            with({.hashSize = 0, .identifierOffset = 88, .length = 104}), damaged);
        row("team out of range", with({.team = "T", .teamOffset = 0xFFFFFFFF}), damaged);
        row("team without its end", with({.team = "T", .hashSize = 0, .length = 106}), damaged);
        row("team out of range, version before teams",
            with({.team = "T", .version = 0x20100, .teamOffset = 0xFFFFFFFF}), x);
        row("hashes out of range", with({.hashOffset = 100000}), damaged);
        row("hashes end out of range", with({.hashOffset = 260}), damaged);
        row("hashes of special slots begin in front", with({.hashOffset = 63}), damaged);
        row("very many special slots",
            with({.hashSize = 255, .specialSlotCount = 0, .codeSlotCount = 0xFFFFFFFF}), damaged);
    }
    void checksTheCodeDirectory() { checkRow(); }

    void comparesPagesWithTheCodeLimit_data()
    {
        addColumns();
        const QString x = u"com.example.Tool"_s;
        const auto with = [](const DirectoryForm &form) { return programWith(signature(form)); };
        row("one slot too many", with({.codeSlotCount = 4}), damaged);
        row("one slot too few", with({.codeSlotCount = 2}), damaged);
        row("exact multiple of the page", with({.codeLimit = 8192}), x);
        row("one byte more", with({.codeLimit = 8193}), x);
        row("no code but pages", with({.codeLimit = 0, .codeSlotCount = 0}), damaged);
        row("one page for all", with({.pageShift = 0}), x);
        row("one page for nothing", with({.codeLimit = 0, .pageShift = 0}), x);
        row("two slots without pages", with({.pageShift = 0, .codeSlotCount = 2}), damaged);
        row("no slot without pages", with({.pageShift = 0, .codeSlotCount = 0}), damaged);
        row("long limit counts", with({.codeLimit = 1, .longCodeLimit = 9000}), x);
        row("long limit in an older version is not there",
            with({.version = 0x20200, .codeLimit = 1, .longCodeLimit = 9000}), damaged);
        row("enormous pages", with({.pageShift = 255, .codeSlotCount = 1}), x);
    }
    void comparesPagesWithTheCodeLimit() { checkRow(); }
};

QTEST_APPLESS_MAIN(TestCodeDirectory)
#include "tst_code_directory.moc"
