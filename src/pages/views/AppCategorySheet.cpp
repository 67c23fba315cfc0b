#include "pages/views/AppCategorySheet.h"

#include "pages/figures/AppCategoryMarks.h"
#include "pages/kit/LoadingState.h"
#include "pages/kit/Look.h"
#include "pages/kit/MarkList.h"
#include "pages/kit/SearchField.h"
#include "pages/kit/SheetHead.h"
#include "pages/kit/TextDrawing.h"
#include "pages/views/CategoryPickerSheet.h"
#include "platform/MainLoop.h"

#include <QEvent>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

const char* const kTitle = "App 分类管理";
constexpr QSize kSize(480, 560);
constexpr int kSideMargin = 12; // of the search field and of the rows
constexpr int kNothingPadding = 40;
constexpr double kFrameSec = 0.02;

QLabel* nothingLabel()
{
    auto* label = secondaryLabel({}, Look::font(TextStyle::caption));
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    label->setContentsMargins(0, kNothingPadding, 0, kNothingPadding);
    return label;
}

} // namespace

AppCategorySheet::AppCategorySheet(const Platform& platform, QWidget* owner)
    : Sheet(kTitle, kSize, owner)
    , platform(platform)
    , list(platform)
    , field(new SearchField("搜索 App 名称..."))
    , content(new QStackedWidget)
    , loading(new LoadingState)
    , nothing(nothingLabel())
    , rows(new MarkList("App", {.rowHeight = kAppRowHeight, .sideMargin = kSideMargin}))
{
    auto* head = new SheetHead(kTitle, "完成");
    for (QWidget* state : {static_cast<QWidget*>(loading), static_cast<QWidget*>(nothing),
             static_cast<QWidget*>(rows)}) {
        content->addWidget(state);
    }
    auto* padded = new QVBoxLayout;
    padded->setContentsMargins(kSideMargin, kSideMargin, kSideMargin, kSideMargin);
    padded->addWidget(field);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head);
    column->addLayout(padded);
    column->addWidget(content, 1);
    field->setFocus();

    connect(head, &SheetHead::pressed, this, &QDialog::accept);
    connect(field, &SearchField::textChanged, this, &AppCategorySheet::search);
    connect(
        field, &SearchField::leftDownwards, this, [this] { rows->setFocus(Qt::TabFocusReason); });
    connect(rows, &MarkList::pressed, this,
        [this](int row) { pick(shown[static_cast<std::size_t>(row)]); });
}

bool AppCategorySheet::event(QEvent* event)
{
    if (event->type() == QEvent::Paint && isLoadDue) {
        isLoadDue = false;
        loadSoon();
    }
    return Sheet::event(event);
}

void AppCategorySheet::loadSoon()
{
    // The load holds the main thread for as long as there is history to read. A frame's time later
    // the wheel that is being painted now is on screen, and stays there meanwhile.
    platform.mainLoop.runAfter(kFrameSec, lifetime.whileAlive([this] {
        list.loadData();
        showApps();
    }));
}

void AppCategorySheet::search(const QString& text)
{
    list.setSearchText(text.toStdString());
    showApps();
    rows->goToTop();
}

void AppCategorySheet::showApps()
{
    if (list.isLoading()) {
        return;
    }
    shown = list.filteredApps();
    const int count = static_cast<int>(shown.size());
    rows->setRows(count, [this](int row, Size size, const TextWidth& textWidth) {
        const auto place = static_cast<std::size_t>(row);
        return appRowMarks(shown[place], place + 1 == shown.size(), size, textWidth);
    });
    nothing->setText(list.searchText().empty() ? "暂无 App 数据" : "无匹配结果");
    content->setCurrentWidget(shown.empty() ? static_cast<QWidget*>(nothing) : rows);
}

void AppCategorySheet::pick(const AppEntry& app)
{
    auto* picker = new CategoryPickerSheet(
        app,
        [this, app](std::optional<std::int64_t> categoryId) {
            list.updateCategory(app, categoryId);
            showApps();
        },
        this);
    picker->setAttribute(Qt::WA_DeleteOnClose);
    picker->open();
}

} // namespace quillbrook
