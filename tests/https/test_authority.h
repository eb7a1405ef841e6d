#pragma once

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QString>
#include <QTemporaryDir>

namespace zorvane::tests
{

/** An authority of a test's own, which nobody else trusts. Its certificates are made by "openssl".
 */
class TestAuthority
{
public:
    TestAuthority();

    [[nodiscard]] QSslCertificate certificate() const;

    enum class Validity { Current, Expired };

    /** What a server of these names needs ("DNS:localhost,IP:127.0.0.1"). */
    [[nodiscard]] QSslConfiguration issue(
        const QString &names, Validity validity = Validity::Current) const;

private:
    [[nodiscard]] QByteArray read(const QString &name) const;
    void openssl(const QStringList &arguments) const;

    QTemporaryDir m_folder;
};

} // namespace zorvane::tests
