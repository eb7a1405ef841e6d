#include "platform/simulated/file_bundles.h"

#include "platform/simulated/bundle_layout.h"
#include "platform/simulated/localized_information.h"
#include "platform/simulated/property_list.h"

using namespace Qt::StringLiterals;

namespace zorvane::platform::simulated
{

namespace
{

class FileBundle final : public Bundle
{
public:
    FileBundle(QVariantMap information, QVariantMap localized)
        : m_information(std::move(information))
        , m_localized(std::move(localized))
    {
    }

    [[nodiscard]] std::optional<QString> identifier() const override
    {
        return textOf(m_information.value(u"CFBundleIdentifier"_s));
    }

    [[nodiscard]] QVariant informationValue(const QString &key) const override
    {
        return m_localized.value(key, m_information.value(key));
    }

private:
    QVariantMap m_information;
    QVariantMap m_localized;
};

} // namespace

FileBundles::FileBundles(QStringList languages)
    : m_languages(std::move(languages))
{
}

std::unique_ptr<Bundle> FileBundles::open(const std::filesystem::path &path) const
{
    const std::optional<BundleLayout> layout = bundleLayout(path);
    if (!layout)
        return nullptr;
    QVariantMap information = readBundleInformation(*layout);
    const QString region
        = textOf(information.value(u"CFBundleDevelopmentRegion"_s)).value_or(u"en"_s);
    QVariantMap localized = readLocalizedInformation(*layout, m_languages, region);
    return std::make_unique<FileBundle>(std::move(information), std::move(localized));
}

} // namespace zorvane::platform::simulated
