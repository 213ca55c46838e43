// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace vellory {

/// What one delegate of the search results shows. The delegate stays and its cell is filled anew
/// when another result takes its place.
class SearchCell : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Cells come from the search")
    Q_PROPERTY(QString cellId READ cellId NOTIFY contentChanged)
    Q_PROPERTY(QString title READ title NOTIFY contentChanged)
    Q_PROPERTY(QString marked READ marked NOTIFY contentChanged)
    Q_PROPERTY(QString picture READ picture NOTIFY contentChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY contentChanged)
    Q_PROPERTY(QString badge READ badge NOTIFY contentChanged)
    Q_PROPERTY(bool highlighted READ isHighlighted NOTIFY highlightedChanged)

  public:
    struct Content {
        QString id{};
        QString title{}; ///< as plain text
        /// The title with the matched letters emphasised, in styled text; empty for none.
        QString marked{};
        QString picture{}; ///< an app's image source, an emoji, or the sum that was typed
        bool isRunning = false;
        QString badge{};

        friend bool operator==(const Content&, const Content&) = default;
    };

    using QObject::QObject;

    QString cellId() const { return content_.id; }
    QString title() const { return content_.title; }
    QString marked() const { return content_.marked; }
    QString picture() const { return content_.picture; }
    bool isRunning() const { return content_.isRunning; }
    QString badge() const { return content_.badge; }
    bool isHighlighted() const { return highlighted_; }

    void setContent(Content content) {
        if (content != content_) {
            content_ = std::move(content);
            Q_EMIT contentChanged();
        }
    }
    void setHighlighted(bool highlighted) {
        if (highlighted != highlighted_) {
            highlighted_ = highlighted;
            Q_EMIT highlightedChanged();
        }
    }

  Q_SIGNALS:
    void contentChanged();
    void highlightedChanged();

  private:
    Content content_;
    bool highlighted_ = false;
};

} // namespace vellory
