#include "support/platform/qt/QtDialogs.h"

#include <QFile>
#include <QFileDialog>
#include <QInputDialog>

namespace tolva {

namespace {

QString Text(const std::string& bytes) { return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size())); }

} // namespace

QMessageBox::Icon QtDialogs::QtIcon(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Stop: return QMessageBox::Critical;
    case MessageIcon::Exclamation: return QMessageBox::Warning;
    case MessageIcon::Warning: return QMessageBox::Warning;
    case MessageIcon::Information: return QMessageBox::Information;
    case MessageIcon::Question: return QMessageBox::Question;
    case MessageIcon::None: break;
    }
    return QMessageBox::NoIcon;
}

MessageResult QtDialogs::MessageBox(const std::string& text, const std::string& title, MessageIcon icon,
                                    MessageButtons buttons) {
    const bool withCancel = buttons == MessageButtons::OkCancel;
    QMessageBox box(QtIcon(icon), Text(title), Text(text),
                    withCancel ? QMessageBox::Ok | QMessageBox::Cancel : QMessageBox::Ok, owner_.data());
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(withCancel ? QMessageBox::Cancel : QMessageBox::Ok);
    const int answer = box.exec();
    return withCancel && answer != QMessageBox::Ok ? MessageResult::Cancel : MessageResult::Ok;
}

std::string QtDialogs::InputBox(const std::string& prompt, const std::string& title, const std::string& offered) {
    QInputDialog dialog(owner_.data());
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setWindowTitle(Text(title));
    dialog.setLabelText(Text(prompt));
    dialog.setTextValue(Text(offered));
    if (dialog.exec() != QDialog::Accepted) return {};
    return dialog.textValue().toLatin1().toStdString();
}

QStringList QtDialogs::NameFilters(const std::string& filter) {
    QStringList filters;
    const QStringList parts = Text(filter).split('|');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(';', Qt::SkipEmptyParts);
        for (QString& pattern : patterns) pattern = pattern.trimmed();
        filters << parts[i] + " (" + patterns.join(' ') + ")";
    }
    return filters;
}

std::string QtDialogs::SaveFileBox(const SaveFileRequest& request) {
    QFileDialog dialog(owner_.data(), Text(request.Title), QFile::decodeName(request.InitialFolder.c_str()));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.OverwritePrompt);
    const QStringList filters = NameFilters(request.Filter);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
}

} // namespace tolva
