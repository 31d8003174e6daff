#include "property_list.h"

#include <QFile>
#include <QXmlStreamReader>

namespace quenchly::testing {
namespace {

QString texts(QXmlStreamReader& reader)
{
    QStringList items;
    while (reader.readNextStartElement()) {
        if (reader.name() != QStringLiteral("string"))
            reader.raiseError(QStringLiteral("no text in an array"));
        items += reader.readElementText();
    }
    return items.join(u',');
}

QString value(QXmlStreamReader& reader)
{
    if (!reader.readNextStartElement())
        reader.raiseError(QStringLiteral("a key without a value"));
    const QString type = reader.name().toString();
    if (type == QStringLiteral("string"))
        return reader.readElementText();
    if (type == QStringLiteral("array"))
        return texts(reader);
    if (type != QStringLiteral("true") && type != QStringLiteral("false"))
        reader.raiseError(QStringLiteral("an unknown type: ") + type);
    reader.skipCurrentElement();
    return type;
}

void readDictionary(QXmlStreamReader& reader, std::map<std::string, std::string>& values)
{
    while (reader.readNextStartElement()) {
        if (reader.name() != QStringLiteral("key"))
            reader.raiseError(QStringLiteral("a value without a key"));
        const std::string key = reader.readElementText().toStdString();
        if (!values.emplace(key, value(reader).toStdString()).second)
            reader.raiseError(QStringLiteral("a key twice: ") + QString::fromStdString(key));
    }
}

}  // namespace

std::map<std::string, std::string> readPropertyList(const std::filesystem::path& file)
{
    QFile device(QString::fromStdString(file.string()));
    if (!device.open(QIODevice::ReadOnly))
        return {{"error", device.errorString().toStdString()}};
    QXmlStreamReader reader(&device);
    std::map<std::string, std::string> values;
    for (const char* element : {"plist", "dict"})
        if (!reader.readNextStartElement() || reader.name() != QLatin1String(element))
            reader.raiseError(QStringLiteral("not a property list"));
    readDictionary(reader, values);
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        return {{"error", reader.errorString().toStdString()}};
    return values;
}

}  // namespace quenchly::testing
