#include "UserFilesWorld.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImage>

#include <memory>
#include <utility>

namespace ipncsdk::test {

QByteArray picture(const char* format, int width, int height, int seed) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(qRgb(seed * 7 % 256, seed * 13 % 256, 90));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

std::string hashOf(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().toStdString();
}

Json mapUpload(const std::filesystem::path& file) {
    return {{"reqtype", "userupload"},
            {"type", "maps"},
            {"mimetype", "image/png"},
            {"uploadpath", file.string()},
            {"params", ""},
            {"formdata", ""},
            {"mapinfo",
             {{"name", "图"}, {"type", "local"}, {"range", {{"distance", {{"w", "20"}, {"h", "10"}}}}}, {"k", 1}}}};
}

Json iconUpload(const std::filesystem::path& file) {
    return {{"reqtype", "userupload"}, {"type", "icons"}, {"uploadpath", file.string()}};
}

Json flow(TestSdk& sdk, const Json& message, std::vector<Json>* progress) {
    auto received = std::make_shared<Received>();
    int id = 0;
    sdk.runtime.requestMessage(toText(message), id, [received](const std::string& text) { received->add(text); });
    const auto last = [&] {
        const auto all = received->all();
        return all.empty() || !all.back().contains("resp") ? Json() : all.back();
    };
    if (id <= 0 || !waitFor([&] { return !last().is_null(); }))
        return {};
    const auto all = received->all();
    if (progress != nullptr)
        progress->assign(all.begin(), all.end() - 1);
    return last();
}

Json download(TestSdk& sdk, Json params) {
    return sdk.ask({{"reqtype", "urlreq"}, {"urlreq", {{"reqtype", "userdown"}, {"params", std::move(params)}}}});
}

UserFilesWorld::UserFilesWorld() {
    good = sdk.start() == emSuccess && sdk.signIn();
    count = sdk.filesIn(filesFolder).size();
}

std::filesystem::path UserFilesWorld::put(const std::string& name, const QByteArray& bytes) const {
    sdk.write(name, bytes.toStdString());
    return sdk.path(name);
}

} // namespace ipncsdk::test
