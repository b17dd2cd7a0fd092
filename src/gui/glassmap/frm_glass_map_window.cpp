#include "gui/glassmap/frm_glass_map_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "core/platform/file_io.h"
#include "gui/glassmap/glass_map_canvas.h"
#include "gui/platform/binders.h"

namespace ostrel::gui {

frmGlassMapWindow::frmGlassMapWindow(frmGlassMap& unit, Hooks hooks, QWidget* parent)
    : QWidget(parent, Qt::Window), unit_(unit), hooks_(std::move(hooks)) {
    setObjectName("frmGlassMap");
    setWindowTitle("Glass map");
    auto* side = new QWidget(this);
    side->setFixedWidth(250);
    auto* sideCol = new QVBoxLayout(side);
    sideCol->setContentsMargins(0, 0, 0, 0);

    auto* view = new QGroupBox("View", side);
    auto* viewCol = new QVBoxLayout(view);
    auto* optAbbe = new QRadioButton(view);
    auto* optPgF = new QRadioButton(view);
    optAbbe->setObjectName("optAbbe");
    optPgF->setObjectName("optPgF");
    Bind(optAbbe, unit_.optAbbe);
    Bind(optPgF, unit_.optPgF);
    connect(optAbbe, &QRadioButton::clicked, this, [this] { unit_.optViewClick(false); });
    connect(optPgF, &QRadioButton::clicked, this, [this] { unit_.optViewClick(true); });
    viewCol->addWidget(optAbbe);
    viewCol->addWidget(optPgF);
    sideCol->addWidget(view);

    auto* sources = new QGroupBox("Catalogue sources", side);
    auto* scroll = new QScrollArea(sources);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* inner = new QWidget(scroll);
    sourceBox_ = new QVBoxLayout(inner);
    sourceBox_->setContentsMargins(2, 2, 2, 2);
    sourceBox_->addStretch();
    scroll->setWidget(inner);
    auto* sourcesCol = new QVBoxLayout(sources);
    sourcesCol->addWidget(scroll);
    sideCol->addWidget(sources, 1);

    auto* find = new QGroupBox("Find a glass", side);
    auto* findCol = new QVBoxLayout(find);
    auto* txtSearch = new QLineEdit(find);
    txtSearch->setObjectName("txtSearch");
    txtSearch->setPlaceholderText("Name");
    txtSearch->setClearButtonEnabled(true);
    Bind(txtSearch, unit_.txtSearch);
    connect(txtSearch, &QLineEdit::textEdited, this, [this] { unit_.txtSearchChange(); });
    auto* lblSearch = new QLabel(find);
    lblSearch->setObjectName("lblSearch");
    Bind(lblSearch, unit_.lblSearch);
    findCol->addWidget(txtSearch);
    findCol->addWidget(lblSearch);
    sideCol->addWidget(find);

    auto* near = new QGroupBox("Nearest catalogue glasses", side);
    auto* nearForm = new QFormLayout(near);
    auto* cmbCustom = new QComboBox(near);
    cmbCustom->setObjectName("cmbCustom");
    Bind(cmbCustom, unit_.cmbCustom);
    auto* txtCount = new QLineEdit(near);
    txtCount->setObjectName("txtCount");
    Bind(txtCount, unit_.txtCount);
    auto* txtNdScale = new QLineEdit(near);
    txtNdScale->setObjectName("txtNdScale");
    Bind(txtNdScale, unit_.txtNdScale);
    connect(txtNdScale, &QLineEdit::editingFinished, this, [this] { unit_.txtNdScaleChange(); });
    auto* comNearest = new QPushButton(near);
    comNearest->setObjectName("comNearest");
    Bind(comNearest, unit_.comNearest);
    connect(comNearest, &QPushButton::clicked, this, [this] { unit_.comNearestClick(); });
    auto* lstNearest = new QListWidget(near);
    lstNearest->setObjectName("lstNearest");
    lstNearest->setMaximumHeight(120);
    Bind(lstNearest, unit_.lstNearest);
    nearForm->addRow("Material", cmbCustom);
    nearForm->addRow("How many", txtCount);
    nearForm->addRow("nd scale", txtNdScale);
    nearForm->addRow(comNearest);
    nearForm->addRow(lstNearest);
    sideCol->addWidget(near);

    auto* buttons = new QHBoxLayout;
    auto* comReset = new QPushButton(side);
    comReset->setObjectName("comReset");
    Bind(comReset, unit_.comReset);
    connect(comReset, &QPushButton::clicked, this, [this] { unit_.comResetClick(); });
    auto* comSave = new QPushButton("Save image...", side);
    comSave->setObjectName("comSaveImage");
    connect(comSave, &QPushButton::clicked, this, [this] { comSaveImageClick(); });
    auto* comCompare = new QPushButton("Compare...", side);
    comCompare->setObjectName("comCompare");
    comCompare->setToolTip(
        "Compare the chosen material with its nearest catalogue glasses: index, index "
        "difference and transmission");
    connect(comCompare, &QPushButton::clicked, this, [this] { comCompareClick(); });
    buttons->addWidget(comReset);
    buttons->addWidget(comSave);
    sideCol->addLayout(buttons);
    sideCol->addWidget(comCompare);

    canvas_ = new GlassMapCanvas(unit_, this);
    canvas_->SetOpenMaterial(hooks_.openMaterial);
    canvas_->setToolTip("");
    auto* lblStatus = new QLabel(this);
    lblStatus->setObjectName("lblStatus");
    lblStatus->setWordWrap(true);
    Bind(lblStatus, unit_.lblStatus);
    auto* hint = new QLabel(
        "Wheel: zoom   Drag: move   Right-drag or Shift-drag: zoom to a rectangle   "
        "Click a custom glass: open it",
        this);
    hint->setStyleSheet("color: gray");

    auto* right = new QVBoxLayout;
    right->addWidget(canvas_, 1);
    right->addWidget(hint);
    right->addWidget(lblStatus);
    auto* row = new QHBoxLayout(this);
    row->addWidget(side);
    row->addLayout(right, 1);
    resize(1200, 780);
    RebuildSources();
}

void frmGlassMapWindow::RebuildSources() {
    for (QWidget* w : sourceWidgets_) delete w;
    sourceWidgets_.clear();
    for (size_t i = 0; i < unit_.chkSource.size(); ++i) {
        auto* box = new QCheckBox;
        box->setObjectName(QString("chkSource%1").arg(i));
        Bind(box, *unit_.chkSource[i]);
        // The source's colour on the map.
        const uint32_t c = SourceColour(static_cast<int>(i));
        box->setStyleSheet(QString("QCheckBox { color: #%1; }").arg(c, 6, 16, QChar('0')));
        connect(box, &QCheckBox::clicked, this,
                [this, i] { unit_.chkSourceClick(static_cast<int>(i)); });
        sourceBox_->insertWidget(static_cast<int>(i), box);
        sourceWidgets_.push_back(box);
    }
}

bool frmGlassMapWindow::SaveImage(const QString& path) {
    if (path.endsWith(".svg", Qt::CaseInsensitive)) {
        FileError error;
        return WriteFileAtomic(FromQt(path), MapSceneSvg(unit_.Scene()), error);
    }
    const MapScene scene = unit_.Scene();
    QImage image(scene.width, scene.height, QImage::Format_RGB32);
    QPainter p(&image);
    PaintMapScene(p, scene);
    p.end();
    return image.save(path, "PNG");
}

void frmGlassMapWindow::comSaveImageClick() {
    QString filter;
    const QString path = QFileDialog::getSaveFileName(
        this, "Save image", unit_.optPgF.value ? "glass_map_pgf.png" : "glass_map.png",
        "PNG image (*.png);;SVG image (*.svg)", &filter);
    if (path.isEmpty()) return;
    QString file = path;
    if (!file.endsWith(".png", Qt::CaseInsensitive) && !file.endsWith(".svg", Qt::CaseInsensitive))
        file += filter.contains("svg") ? ".svg" : ".png";
    if (!SaveImage(file))
        unit_.lblStatus.caption = "The image could not be written: " + FromQt(file);
}

void frmGlassMapWindow::comCompareClick() {
    if (!hooks_.compare) return;
    std::vector<std::string> labels;
    const int item = unit_.cmbCustom.listIndex();
    if (item >= 0) {
        const GlassPoint& p = unit_.Data().points[unit_.cmbCustom.ItemData(item)];
        labels.push_back(p.name + " (" + p.source + ")");
        for (const NearGlass& n : unit_.nearest()) {
            const GlassPoint& q = unit_.Data().points[n.point];
            labels.push_back(q.name + " (" + q.source + ")");
        }
    }
    hooks_.compare(labels);
}

}  // namespace ostrel::gui
