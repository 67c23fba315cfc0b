#include "lab/CategoriesPage.h"

#include "lab/AccessibleText.h"
#include "lab/Arguments.h"
#include "lab/OffscreenQt.h"
#include "pages/kit/MarkList.h"
#include "pages/kit/PlainButton.h"
#include "pages/kit/SearchField.h"
#include "pages/views/AppCategorySheet.h"
#include "pages/views/CategoryPickerSheet.h"
#include "platform/virtual/VirtualMachine.h"

#include <QPainter>
#include <QPixmap>

namespace quillbrook::lab {

namespace {

/// Presses the first row of that name; false when there is none.
bool pressRow(MarkList& rows, const std::string& name)
{
    for (int row = 0; row < rows.rowCount(); ++row) {
        if (rows.spokenMark(row).name == name) {
            rows.press(row);
            return true;
        }
    }
    return false;
}

/// Presses a category, or the button that gives back the rules' own.
bool choose(CategoryPickerSheet& picker, const std::string& label)
{
    auto* restore = picker.findChild<PlainButton*>();
    if (restore != nullptr && restore->text().toStdString() == label) {
        restore->click();
        return true;
    }
    return pressRow(*picker.findChild<MarkList*>(), label);
}

/// The picker over the list, or null when it isn't open.
CategoryPickerSheet* openPicker(const AppCategorySheet& sheet)
{
    auto* picker = sheet.findChild<CategoryPickerSheet*>();
    return picker != nullptr && picker->isVisible() ? picker : nullptr;
}

/// Presses what `--pick` and `--choose` tell. Ends the program when it isn't there.
void pick(const Arguments& arguments, AppCategorySheet& sheet)
{
    const auto name = arguments.option("--pick");
    const auto label = arguments.option("--choose");
    if (label && !name) {
        arguments.reject("--choose", "--pick is missing");
    }
    if (!name) {
        return;
    }
    if (!pressRow(*sheet.findChild<MarkList*>(), *name)) {
        arguments.reject("--pick", "there is no application '" + *name + "'");
    }
    CategoryPickerSheet& picker = *openPicker(sheet);
    picker.setGeometry({sheet.geometry().center() - picker.rect().center(), picker.size()});
    if (label && !choose(picker, *label)) {
        arguments.reject("--choose", "there is no choice '" + *label + "'");
    }
    QApplication::processEvents();
}

QPixmap pictureOf(AppCategorySheet& sheet, CategoryPickerSheet* picker)
{
    QPixmap picture = sheet.grab();
    if (picker != nullptr) {
        QPainter painter(&picture);
        painter.fillRect(sheet.rect(), QColor(0, 0, 0, 64));
        painter.drawPixmap(sheet.mapFromGlobal(picker->mapToGlobal(QPoint())), picker->grab());
    }
    return picture;
}

} // namespace

int categoriesPage(const Arguments& arguments)
{
    for (const char* name : {"--period", "--csv"}) {
        if (arguments.option(name)) {
            arguments.reject(name, "Categories has none");
        }
    }
    const OffscreenQt qt(arguments);
    const double now = nowOf(arguments);
    VirtualMachine machine(arguments.required("--data"), now);
    AppCategorySheet sheet(machine.platform(), nullptr);
    sheet.show();
    QApplication::processEvents();
    machine.runFor(1);
    machine.clock.set(now); // at which a choice is written
    if (const auto text = arguments.option("--search")) {
        sheet.findChild<SearchField*>()->setText(QString::fromStdString(*text));
    }
    pick(arguments, sheet);
    QApplication::processEvents();
    CategoryPickerSheet* picker = openPicker(sheet);
    writePicture(arguments, pictureOf(sheet, picker));
    QByteArray text = accessibleText(sheet);
    if (picker != nullptr) {
        text += accessibleText(*picker, sheet);
    }
    writeText(arguments, "--text", text);
    return 0;
}

} // namespace quillbrook::lab
