// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractAnimation>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace vellory {

/// A value on a damped spring: it goes towards `to`, keeps its speed when `to` changes on the way,
/// and rests exactly there in the end.
///
/// `response` is the period of the undamped spring in seconds, `dampingFraction` 1 for a spring
/// that just does not swing over. With `enabled` off the value jumps.
class Spring : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal value READ value NOTIFY valueChanged)
    Q_PROPERTY(qreal to READ to WRITE setTo NOTIFY toChanged)
    Q_PROPERTY(qreal response MEMBER response_)
    Q_PROPERTY(qreal dampingFraction MEMBER dampingFraction_)
    Q_PROPERTY(bool enabled MEMBER enabled_)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)

  public:
    explicit Spring(QObject* parent = nullptr);

    qreal value() const { return value_; }
    qreal to() const { return to_; }
    void setTo(qreal to);
    bool isRunning() const { return driver_.state() == QAbstractAnimation::Running; }

    /// Puts the value somewhere, at rest.
    Q_INVOKABLE void jump(qreal value);
    /// Follows a finger: puts the value somewhere without moving the target.
    Q_INVOKABLE void hold(qreal value);
    /// Goes to `to` starting with a speed in units a second, as a flick leaves it.
    Q_INVOKABLE void release(qreal to, qreal velocity);

  Q_SIGNALS:
    void valueChanged();
    void toChanged();
    void runningChanged();

  private:
    class Driver final : public QAbstractAnimation {
      public:
        explicit Driver(Spring& spring) : spring_(spring) {}
        int duration() const override { return -1; }

      protected:
        void updateCurrentTime(int milliseconds) override;

      private:
        Spring& spring_;
    };

    void start(qreal velocity);
    void advanceTo(qreal seconds);
    void setValue(qreal value);
    /// Distance from the target and speed, `seconds` after the start.
    struct Motion {
        qreal distance = 0;
        qreal velocity = 0;
    };
    Motion motionAt(qreal seconds) const;

    Driver driver_{*this};
    qreal value_ = 0;
    qreal to_ = 0;
    qreal response_ = 0.45;
    qreal dampingFraction_ = 0.86;
    bool enabled_ = true;
    Motion initial_;
    qreal elapsed_ = 0;
};

} // namespace vellory
