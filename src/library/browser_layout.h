#pragma once

#include "library/split_bar.h"
#include "platform/settings_store.h"

#include <optional>

namespace velmo {

// Lays out the browser's four panes around three splitters: tree and category slide to the left, entry slide
// and list to the right. No pane is ever squeezed out.
class BrowserLayout : public QWidget {
    Q_OBJECT

public:
    BrowserLayout(QWidget* tree, QWidget* treeSlide, QWidget* entrySlide, QWidget* entryList);

    // Puts the splitters where they were saved; without a number there the panes share the window.
    void Restore(const SettingsStore& settings);
    // The rectangles of the splitters as they are laid out, in twips.
    void Save(SettingsStore& settings) const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    // A splitter, where it is wanted (pixels of this widget; none for its share of the room) and how thick it
    // is.
    struct Split {
        SplitBar* bar;
        QString key;
        double share;
        int thickness;
        std::optional<int> wanted;
    };

    Split MakeSplit(Qt::Orientation orientation, const char* image, const char* picture, const QString& key,
                    double share);
    int PlaceBar(const Split& split, const QRect& room) const;
    void LayOut();
    void LayOutColumn(const Split& split, QWidget* upper, QWidget* lower, const QRect& column) const;

    QWidget* tree_;
    QWidget* treeSlide_;
    QWidget* entrySlide_;
    QWidget* entryList_;
    Split frame_;
    Split left_;
    Split right_;
};

} // namespace velmo
