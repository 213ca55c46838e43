// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtHttpClient.h"

#include <memory>

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace vellory {

namespace {

/// The proxies of the desktop's settings and of the environment; Qt asks for them only when told.
class SystemProxies final : public QNetworkProxyFactory {
  public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
        return systemProxyForQuery(query);
    }
};

} // namespace

std::optional<std::string> QtHttpClient::get(const HttpRequest& request) const {
    const QUrl url(QString::fromStdString(request.url), QUrl::StrictMode);
    if (url.scheme() != "http" && url.scheme() != "https") {
        return std::nullopt;
    }
    QNetworkAccessManager manager;
    if (request.direct) {
        manager.setProxy(QNetworkProxy::NoProxy);
    } else {
        manager.setProxyFactory(new SystemProxies);
    }
    QNetworkRequest question(url);
    question.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                          QNetworkRequest::ManualRedirectPolicy);
    question.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    question.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    const std::unique_ptr<QNetworkReply> reply(manager.get(question));
    // No more of a flood is held than is looked at.
    reply->setReadBufferSize(static_cast<qint64>(request.maxBytes) + 1);

    QEventLoop loop;
    std::string body;
    bool isTooLong = false;
    const auto receive = [&] {
        body += reply->readAll().toStdString();
        if (body.size() > request.maxBytes) {
            isTooLong = true;
            loop.quit();
        }
    };
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, receive);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(request.patience, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) {
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    if (!reply->isFinished() || isTooLong || reply->error() != QNetworkReply::NoError) {
        return std::nullopt;
    }
    receive();
    constexpr int ok = 200;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status == ok && !isTooLong ? std::optional(std::move(body)) : std::nullopt;
}

} // namespace vellory
