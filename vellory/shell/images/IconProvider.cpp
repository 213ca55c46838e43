// SPDX-License-Identifier: Apache-2.0
#include "shell/images/IconProvider.h"

#include <algorithm>
#include <atomic>
#include <cstring>

#include <QFileInfo>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QQuickTextureFactory>
#include <QUrl>

#include "Support/Text.h"

namespace vellory {

namespace {

constexpr int defaultPixels = 96;
constexpr int largestPixels = 1024;
/// A chosen picture larger than this on a side is not decoded.
constexpr int largestPictureSide = 16'384;

QImage toQImage(const Image& image) {
    QImage out(image.width, image.height, QImage::Format_ARGB32_Premultiplied);
    if (out.isNull()) {
        return out;
    }
    const auto rowBytes = static_cast<std::size_t>(image.width) * sizeof(std::uint32_t);
    for (int y = 0; y < image.height; ++y) {
        std::memcpy(out.scanLine(y),
                    image.pixels.data() +
                        static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width),
                    rowBytes);
    }
    return out;
}

/// `image` in the middle of a transparent square.
QImage squared(const QImage& image, int pixels) {
    if (image.width() == pixels && image.height() == pixels) {
        return image;
    }
    QImage out(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QSize fitted = image.size().scaled(pixels, pixels, Qt::KeepAspectRatio);
    painter.drawImage(
        QRect(QPoint((pixels - fitted.width()) / 2, (pixels - fitted.height()) / 2), fitted),
        image);
    return out;
}

class Response final : public QQuickImageResponse {
  public:
    QQuickTextureFactory* textureFactory() const override {
        return QQuickTextureFactory::textureFactoryForImage(image_);
    }
    void cancel() override { cancelled_ = true; }
    bool isCancelled() const { return cancelled_; }
    void finish(QImage image) {
        image_ = std::move(image);
        Q_EMIT finished();
    }

  private:
    QImage image_;
    std::atomic<bool> cancelled_ = false;
};

} // namespace

void IconSources::replace(Table table) {
    auto next = std::make_shared<const Table>(std::move(table));
    const std::lock_guard lock(mutex_);
    table_ = std::move(next);
}

std::optional<IconSources::Source> IconSources::find(const BundleID& id) const {
    std::shared_ptr<const Table> table;
    {
        const std::lock_guard lock(mutex_);
        table = table_;
    }
    const auto found = table->find(id);
    return found == table->end() ? std::nullopt : std::optional(found->second);
}

IconProvider::IconProvider(const AppIcons& icons, std::shared_ptr<const IconSources> sources)
    : icons_(icons), sources_(std::move(sources)) {
    pool_.setMaxThreadCount(2);
    pool_.setThreadPriority(QThread::LowPriority);
}

IconProvider::~IconProvider() {
    pool_.clear();
    pool_.waitForDone();
}

QString IconProvider::appSource(const BundleID& id, const std::string& customIcon) {
    QString source = "image://icons/app/" +
                     QString::fromLatin1(QUrl::toPercentEncoding(QString::fromStdString(id)));
    if (!customIcon.empty()) {
        // Another picture must have another address, or the views would go on showing the old one.
        source += "?" + QString::number(qHash(QString::fromStdString(customIcon)), 16);
    }
    return source;
}

QString IconProvider::fileSource(const std::string& path) {
    const QString file = QString::fromStdString(path);
    return "image://icons/file/" + QString::fromLatin1(QUrl::toPercentEncoding(file)) + "?" +
           QString::number(QFileInfo(file).lastModified().toMSecsSinceEpoch(), 16);
}

QImage IconProvider::readPicture(const QString& path, int pixels) {
    if (!QFileInfo(path).isFile()) {
        return {};
    }
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!size.isValid() || std::max(size.width(), size.height()) > largestPictureSide) {
        return {};
    }
    reader.setScaledSize(size.scaled(pixels, pixels, Qt::KeepAspectRatio).expandedTo({1, 1}));
    const QImage image = reader.read();
    return image.isNull() ? image : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage IconProvider::standIn(const QString& name, const BundleID& id, int pixels) {
    // Hues a reader can tell apart, from the identifier, so that an app keeps its colour.
    const auto hue = static_cast<int>(qHash(QByteArray::fromStdString(id)) % 12) * 30;
    QLinearGradient gradient(0, 0, 0, pixels);
    gradient.setColorAt(0, QColor::fromHsl(hue, 110, 150));
    gradient.setColorAt(1, QColor::fromHsl(hue, 120, 105));

    QImage out(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal inset = pixels * 0.06;
    const QRectF square = QRectF(out.rect()).adjusted(inset, inset, -inset, -inset);
    QPainterPath shape;
    shape.addRoundedRect(square, square.width() * 0.24, square.width() * 0.24);
    painter.fillPath(shape, gradient);
    QFont font = painter.font();
    font.setPixelSize(std::max(1, static_cast<int>(pixels * 0.44)));
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(QColor(255, 255, 255, 235));
    const std::string text = name.toStdString();
    painter.drawText(square, Qt::AlignCenter,
                     QString::fromStdString(Text::uppercased(Text::prefix(text, 1))));
    return out;
}

QQuickImageResponse* IconProvider::requestImageResponse(const QString& id, const QSize& size) {
    const int pixels =
        std::clamp(std::max(size.width(), size.height()) > 0 ? std::max(size.width(), size.height())
                                                             : defaultPixels,
                   8, largestPixels);
    auto* response = new Response;
    // The engine keeps the response until it is finished, cancelled or not.
    pool_.start([this, response, id, pixels] {
        if (response->isCancelled()) {
            response->finish({});
            return;
        }
        const QString path = id.section('?', 0, 0);
        const QString kind = path.section('/', 0, 0);
        const QString name = QUrl::fromPercentEncoding(path.section('/', 1).toLatin1());
        QImage image;
        if (kind == "file") {
            image = readPicture(name, pixels);
        } else if (const auto source = sources_->find(name.toStdString())) {
            if (!source->customIcon.empty()) {
                image = readPicture(QString::fromStdString(source->customIcon), pixels);
            }
            if (image.isNull()) {
                if (const auto icon = icons_.icon(source->app, pixels)) {
                    image = toQImage(*icon);
                }
            }
            if (image.isNull()) {
                image =
                    standIn(QString::fromStdString(source->app.name), source->app.bundleID, pixels);
            }
        } else {
            image = standIn(name, name.toStdString(), pixels);
        }
        response->finish(image.isNull() ? image : squared(image, pixels));
    });
    return response;
}

} // namespace vellory
