#include "variables/document_choice.h"

#include "pickers/vlm_file_frm.h"
#include "platform/code_page.h"

namespace velmo {

QString PickDocument(QWidget& window, const QString& caption, GlobalState& state, MessageBoxes& messages) {
    Vlm_FileFrm picker(state, messages, &window);
    picker.setWindowTitle(caption);
    picker.SetPattern(QStringLiteral("*.PDF"));
    picker.ShowModal();
    const QString document = state.HomeDir + state.PickedFile;
    const std::optional<QString> foreign = FirstForeignCharacter(document);
    if (state.PickedFile.isEmpty() || !foreign)
        return state.PickedFile;
    messages.Inform(
        &window,
        QStringLiteral("文字「%1」は CAD に渡せません (コードページ 932 にない文字です)。\n\n文書: %2")
            .arg(*foreign, document));
    return {};
}

} // namespace velmo
