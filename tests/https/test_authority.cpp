#include "https/test_authority.h"

#include "https/program_output.h"

#include <QFile>
#include <QSslKey>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

const char configuration[] = R"(
[req]
distinguished_name = names
[names]
[ca]
default_ca = authority
[authority]
database = index
new_certs_dir = .
certificate = authority.crt
private_key = authority.key
default_md = sha256
policy = policy
copy_extensions = copy
rand_serial = yes
unique_subject = no
[policy]
commonName = supplied
)";

const QStringList newKey{
    u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s};

} // namespace

TestAuthority::TestAuthority()
{
    for (const auto &[name, content] :
        {std::pair(u"openssl.cnf"_s, configuration), std::pair(u"index"_s, "")}) {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) < 0)
            qFatal("%s cannot be written", qPrintable(file.fileName()));
    }
    openssl(QStringList{u"req"_s, u"-x509"_s, u"-config"_s, u"openssl.cnf"_s, u"-keyout"_s,
                u"authority.key"_s, u"-out"_s, u"authority.crt"_s, u"-days"_s, u"2"_s, u"-subj"_s,
                u"/CN=Test Authority"_s, u"-addext"_s, u"basicConstraints=critical,CA:TRUE"_s}
        + newKey);
}

QSslCertificate TestAuthority::certificate() const
{
    return QSslCertificate(read(u"authority.crt"_s));
}

QSslConfiguration TestAuthority::issue(const QString &names, Validity validity) const
{
    openssl(QStringList{u"req"_s, u"-new"_s, u"-config"_s, u"openssl.cnf"_s, u"-keyout"_s,
                u"server.key"_s, u"-out"_s, u"server.csr"_s, u"-subj"_s, u"/CN=server"_s,
                u"-addext"_s, u"subjectAltName="_s + names}
        + newKey);
    const bool expired = validity == Validity::Expired;
    openssl({u"ca"_s, u"-batch"_s, u"-config"_s, u"openssl.cnf"_s, u"-notext"_s, u"-in"_s,
        u"server.csr"_s, u"-out"_s, u"server.crt"_s, u"-startdate"_s, u"20200101000000Z"_s,
        u"-enddate"_s, expired ? u"20200201000000Z"_s : u"20991231000000Z"_s});
    QSslConfiguration result = QSslConfiguration::defaultConfiguration();
    result.setLocalCertificate(QSslCertificate(read(u"server.crt"_s)));
    result.setPrivateKey(QSslKey(read(u"server.key"_s), QSsl::Ec));
    result.setPeerVerifyMode(QSslSocket::VerifyNone);
    return result;
}

QByteArray TestAuthority::read(const QString &name) const
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(file.fileName()));
    return file.readAll();
}

void TestAuthority::openssl(const QStringList &arguments) const
{
    (void)programOutput(u"openssl"_s, arguments, {}, m_folder.path());
}

} // namespace zorvane::tests
