#include "ui/save_dialog.h"

#include <filesystem>

namespace ormel::ui {

std::optional<FileChoice> AskSaveFile(Desktop& desktop, const FileDialog& dialog,
                                      const OverwriteQuestion& question,
                                      const std::function<void(FileChoice&)>& adjust) {
  while (true) {
    std::optional<FileChoice> choice = desktop.SaveFile(dialog);
    if (!choice) return std::nullopt;
    if (adjust) adjust(*choice);
    std::error_code error;
    if (!std::filesystem::exists(choice->Path(), error)) return choice;
    switch (desktop.AskBeforeLoss(question.text, question.title, Buttons::kYesNoCancel)) {
      case Answer::kYes:
        return choice;
      case Answer::kNo:
        break;
      default:
        return std::nullopt;
    }
  }
}

}  // namespace ormel::ui
