// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QQuickWindow>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QQuickWindow::setSceneGraphBackend("software");
    std::string program = argv[0];
    std::string flag = "-platform";
    std::string platform = "offscreen";
    std::vector<char*> arguments{program.data(), flag.data(), platform.data(), nullptr};
    int count = 3;
    const QGuiApplication application(count, arguments.data());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
