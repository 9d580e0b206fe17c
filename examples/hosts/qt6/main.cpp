// SPDX-License-Identifier: MIT
// A Qt 6 window: a picture of the toolkit's above a button and a slider of Qt's. V ends the view and makes it
// anew. `host_qt6 2` opens two windows.
#include <VX_OpenGL64/VX_OpenGL64.h>
#include <examples/hosts/support/HostScene.h>

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QPlatformSurfaceEvent>
#include <QPushButton>
#include <QSlider>
#include <QTimer>

#include <memory>
#include <vector>

namespace {

// A widget with an X window of its own that Qt leaves to others to draw.
class PictureArea : public QWidget {
public:
    explicit PictureArea(HostScene* scene) : m_Scene(scene) {
        setAttribute(Qt::WA_NativeWindow);
        setAttribute(Qt::WA_DontCreateNativeAncestors);
        setAttribute(Qt::WA_PaintOnScreen);
        setAttribute(Qt::WA_NoSystemBackground);
    }
    void toggleView() {
        m_Wanted = !m_Wanted;
        m_View.reset();
        update();
    }

protected:
    QPaintEngine* paintEngine() const override { return nullptr; }
    // The first one comes when the X server shows the window, which so is there.
    void paintEvent(QPaintEvent*) override {
        if (m_Wanted && !m_View)
            m_View = VX_GLHost::open(m_Scene, {.inside = vx::NativeWindow::x11(winId())});
    }
    // Qt may give a widget another X window at any time, and the view goes first.
    bool event(QEvent* event) override {
        if (event->type() == QEvent::PlatformSurface &&
            static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() ==
                QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
            m_View.reset();
        return QWidget::event(event);
    }

private:
    HostScene* m_Scene;
    bool m_Wanted = true;
    std::unique_ptr<VX_GLHost> m_View;
};

class PictureWindow : public QWidget {
public:
    PictureWindow() {
        setWindowTitle("Qt 6");
        resize(640, 408);
        m_Button->setFixedSize(160, 48);
        paintButton();
        m_Slider->setRange(-180, 180);
        m_Slider->setValue(m_Scene->speed());
        auto* const row = new QHBoxLayout;
        row->addWidget(m_Button);
        row->addSpacing(8);
        row->addWidget(m_Slider);
        row->setContentsMargins(0, 0, 8, 0);
        auto* const column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        column->addWidget(m_Area, 1);
        column->addLayout(row);
        connect(m_Button, &QPushButton::clicked, [this] {
            m_Scene->takeNextGround();
            paintButton();
        });
        connect(m_Slider, &QSlider::valueChanged, [this](int value) { m_Scene->setSpeed(value); });
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_V)
            m_Area->toggleView();
    }

private:
    // It has the colour that a click gives to the picture.
    void paintButton() {
        m_Button->setStyleSheet(QString("background: #%1; color: white; border: none")
                                    .arg(m_Scene->nextGround(), 6, 16, QChar('0')));
    }

    NSRef<HostScene> m_Scene = NSInit(new HostScene);
    PictureArea* m_Area = new PictureArea(m_Scene.get());
    QPushButton* m_Button = new QPushButton("Next colour");
    QSlider* m_Slider = new QSlider(Qt::Horizontal);
};

} // namespace

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "xcb");
    QCoreApplication::setAttribute(
        Qt::AA_DontCreateNativeWidgetSiblings); // the picture's window is the only one inside
    QApplication application(count, words);
    std::vector<std::unique_ptr<PictureWindow>> windows(count > 1 && *words[1] == '2' ? 2 : 1);
    for (auto& window : windows) {
        window = std::make_unique<PictureWindow>();
        window->show();
    }
    QTimer timer; // sizes, timers, notifications; frames come by themselves
    QObject::connect(&timer, &QTimer::timeout, [] { NSApplication::sharedApplication()->runStep(0.0); });
    timer.start(10);
    return application.exec();
}
