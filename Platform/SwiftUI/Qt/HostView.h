#pragma once

#include "AppKit/Qt/Contents/ViewContent.h"
#include "Combine/ObservableObject.h"
#include "SwiftUI/Qt/Element.h"
#include "SwiftUI/View.h"

/// A view tree on the screen.
class HostView : public ViewContent {
public:
    explicit HostView(View root);

    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void draw();
    void drawAtNextTurn();
    void place();

    const View m_root;
    WidgetPool m_pool;
    std::optional<Element> m_element;
    std::vector<std::function<void()>> m_appearActions;
    std::vector<AnyCancellable> m_observations;
    bool m_drawsAtNextTurn = false;
};
