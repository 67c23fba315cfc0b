#pragma once

#include "pages/views/Page.h"

namespace quillbrook {

/// The page about the program: what it is called, what it does, and what it promises.
class AboutView final : public Page {
    Q_OBJECT

public:
    explicit AboutView(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData&) override {}
};

} // namespace quillbrook
