#include "platform/qt/PropertyListFile.h"

#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace calorivo {

namespace {

constexpr qint64 longestFile = qint64{1} << 20;

/// Reads one list; the first problem ends it.
class Parser {
  public:
    Parser(const QByteArray& xml, const std::string& file) : reader_(xml), file_(file) {}

    PropertyListFile parse() {
        if (!reader_.readNextStartElement() || reader_.name() != u"plist") fail("it is no property list");
        if (isWell() && (!reader_.readNextStartElement() || reader_.name() != u"dict"))
            fail("the list is no dictionary");
        if (isWell()) readDictionary();
        if (isWell() && reader_.readNextStartElement()) fail("there is more than one dictionary");
        while (isWell() && !reader_.atEnd()) reader_.readNext();
        if (!isWell()) return {std::nullopt, problem()};
        return {std::move(list_), {}};
    }

  private:
    [[nodiscard]] bool isWell() const { return !reader_.hasError(); }
    void fail(const std::string& reason) {
        if (isWell()) reader_.raiseError(QString::fromStdString(reason));
    }
    [[nodiscard]] std::string problem() const {
        return file_ + ':' + std::to_string(reader_.lineNumber()) + ": " +
               reader_.errorString().toStdString();
    }

    void readDictionary() {
        while (isWell() && reader_.readNextStartElement()) {
            if (reader_.name() != u"key") return fail("there is a value without a key");
            std::string key = reader_.readElementText().toStdString();
            const bool isKnown = std::any_of(list_.begin(), list_.end(),
                                             [&key](const auto& entry) { return entry.first == key; });
            if (isKnown) return fail("the key \"" + key + "\" is there twice");
            if (!isWell()) return;
            if (!reader_.readNextStartElement()) return fail("the key \"" + key + "\" has no value");
            Value value = readValue();
            list_.emplace_back(std::move(key), std::move(value));
        }
    }

    Value readValue() {
        const QString kind = reader_.name().toString();
        const QString text = reader_.readElementText();
        bool isRead = true;
        Value value;
        if (kind == u"true" || kind == u"false") {
            isRead = text.isEmpty();
            value = kind == u"true";
        } else if (kind == u"integer") {
            value = std::int32_t{text.trimmed().toInt(&isRead)};
        } else if (kind == u"real") {
            value = text.trimmed().toDouble(&isRead);
        } else if (kind == u"string") {
            value = text.toStdString();
        } else if (kind == u"data") {
            value = dataOf(text, isRead);
        } else {
            fail("<" + kind.toStdString() + "> is no value");
        }
        if (!isRead) fail("\"" + text.trimmed().toStdString() + "\" is no <" + kind.toStdString() + ">");
        return value;
    }

    static Value dataOf(const QString& text, bool& isRead) {
        const QByteArray base64 = text.simplified().remove(u' ').toLatin1();
        const auto [bytes, status] =
            QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
        isRead = status == QByteArray::Base64DecodingStatus::Ok;
        return Data(bytes.begin(), bytes.end());
    }

    QXmlStreamReader reader_;
    const std::string& file_;
    PropertyList list_;
};

}  // namespace

PropertyListFile parsePropertyList(const QByteArray& xml, const std::string& file) {
    return Parser(xml, file).parse();
}

PropertyListFile readPropertyListFile(const std::string& path) {
    const auto unusable = [&path](const std::string& reason) {
        return PropertyListFile{std::nullopt, path + ": " + reason};
    };
    const QString name = QFile::decodeName(QByteArray::fromStdString(path));
    // Before opening: a FIFO would wait for somebody to write to it.
    const QFileInfo info(name);
    if (info.exists() && !info.isFile()) return unusable("it is no regular file");
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return unusable(file.errorString().toStdString());
    const QByteArray xml = file.read(longestFile + 1);
    if (xml.size() > longestFile) return unusable("it is longer than a megabyte");
    return parsePropertyList(xml, path);
}

}  // namespace calorivo
