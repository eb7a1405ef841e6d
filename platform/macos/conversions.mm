#include "platform/macos/conversions.h"

#include <QDateTime>
#include <array>
#include <climits>

namespace zorvane::platform::macos
{

namespace
{

QVariant numberOf(NSNumber *number)
{
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID())
        return bool(number.boolValue);
    if (CFNumberIsFloatType((__bridge CFNumberRef)number) != 0)
        return number.doubleValue;
    return qlonglong(number.longLongValue);
}

QVariantList listOf(NSArray *array)
{
    QVariantList list;
    for (id item in array)
        list.append(variantOf(item));
    return list;
}

NSArray *arrayOf(const QVariantList &list)
{
    NSMutableArray *const array = [NSMutableArray array];
    for (const QVariant &item : list)
        [array addObject:objectOf(item)];
    return array;
}

} // namespace

std::optional<QString> textOf(id object)
{
    if (![object isKindOfClass:NSString.class])
        return std::nullopt;
    return QString::fromNSString(object);
}

QVariant variantOf(id object)
{
    if (object == nil)
        return {};
    if ([object isKindOfClass:NSString.class])
        return QString::fromNSString(object);
    if ([object isKindOfClass:NSNumber.class])
        return numberOf(object);
    if ([object isKindOfClass:NSData.class])
        return QByteArray::fromNSData(object);
    if ([object isKindOfClass:NSDate.class])
        return QDateTime::fromNSDate(object).toUTC();
    if ([object isKindOfClass:NSArray.class])
        return listOf(object);
    if ([object isKindOfClass:NSDictionary.class])
        return mapOf(object);
    return QVariant::fromValue(nullptr);
}

QVariantMap mapOf(NSDictionary *dictionary)
{
    QVariantMap map;
    for (id key in dictionary) {
        if (const auto name = textOf(key))
            map.insert(*name, variantOf(dictionary[key]));
    }
    return map;
}

id objectOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return @(value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
        return @(value.toLongLong());
    case QMetaType::Double:
        return @(value.toDouble());
    case QMetaType::QByteArray:
        return value.toByteArray().toNSData();
    case QMetaType::QDateTime:
        return value.toDateTime().toNSDate();
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return arrayOf(value.toList());
    case QMetaType::QVariantMap:
        return dictionaryOf(value.toMap());
    default:
        return value.toString().toNSString();
    }
}

NSDictionary<NSString *, id> *dictionaryOf(const QVariantMap &map)
{
    NSMutableDictionary<NSString *, id> *const dictionary = [NSMutableDictionary dictionary];
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        dictionary[entry.key().toNSString()] = objectOf(entry.value());
    return dictionary;
}

NSArray<NSString *> *arrayOf(const QStringList &texts)
{
    NSMutableArray<NSString *> *const array = [NSMutableArray array];
    for (const QString &text : texts)
        [array addObject:text.toNSString()];
    return array;
}

std::optional<PlatformError> errorOf(NSError *error)
{
    if (error == nil)
        return std::nullopt;
    return PlatformError{QString::fromNSString(error.domain), error.code,
        QString::fromNSString(error.localizedDescription)};
}

NSURL *urlOf(const std::filesystem::path &path)
{
    if (path.empty())
        return nil;
    std::error_code ignored;
    const bool isDirectory = std::filesystem::is_directory(path, ignored);
    return [NSURL fileURLWithFileSystemRepresentation:path.c_str()
                                          isDirectory:isDirectory
                                        relativeToURL:nil];
}

std::optional<std::filesystem::path> pathOf(NSURL *url)
{
    std::array<char, PATH_MAX> buffer{};
    if (![url getFileSystemRepresentation:buffer.data() maxLength:buffer.size()])
        return std::nullopt;
    return std::filesystem::path(buffer.data());
}

} // namespace zorvane::platform::macos
