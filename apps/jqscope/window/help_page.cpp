#include "window/help_page.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPainter>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "words/live_state.h"

namespace jqscope {
namespace {

struct HelpWords {
  Q_DECLARE_TR_FUNCTIONS(HelpPage)
};

// The frame placed last and the one under the camera, as the window outlines them.
QImage Drawing(LiveState state, QPoint shift) {
  QImage image(220, 110, QImage::Format_RGB32);
  image.fill(QColor(38, 40, 43));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRect placed(24, 24, 80, 60);
  painter.fillRect(placed, QColor(222, 160, 190));
  const LiveStyle style = StyleOf(state);
  QColor fill = style.colour;
  fill.setAlpha(70);
  const QRect live = placed.translated(shift);
  painter.fillRect(live, fill);
  painter.setPen(QPen(style.colour, 3, style.line));
  painter.drawRect(live);
  painter.setPen(Qt::white);
  painter.drawText(image.rect().adjusted(6, 2, -6, -4), Qt::AlignBottom | Qt::AlignRight,
                   style.word);
  return image;
}

}  // namespace

void ShowHelp(QWidget* parent) {
  QDialog dialog(parent);
  dialog.setWindowTitle(HelpWords::tr("How to move"));
  auto* browser = new QTextBrowser;
  const auto add = [browser](const QString& name, LiveState state, QPoint shift) {
    browser->document()->addResource(QTextDocument::ImageResource, QUrl(name),
                                     Drawing(state, shift));
  };
  add("tracked", LiveState::kTracked, QPoint(5, 0));
  add("placed", LiveState::kPlaced, QPoint(24, 6));
  add("lost", LiveState::kLost, QPoint(100, 10));
  browser->setHtml(HelpWords::tr(
      "<h2>How to move</h2>"
      "<p>Start a run with F5 where the picture shows something. Then move slowly and steadily: "
      "1 to 5 % of the frame from one frame to the next. The sentence above the picture always "
      "says what to do now.</p>"
      "<p><img src='tracked'> A frame that has not moved by 10 % since the frame placed last is "
      "followed, not placed: move on.</p>"
      "<p><img src='placed'> From 10 % to 90 % it is placed, and the picture grows.</p>"
      "<p><img src='lost'> After a leap the place is lost. Move back to the highlighted frame; the "
      "yellow arrow points there, and the run goes on by itself.</p>"
      "<h3>What helps</h3><ul>"
      "<li>Keep the light and the focus steady.</li>"
      "<li>Keep something with texture in view.</li>"
      "<li>Go in lines that overlap by a third of the frame.</li>"
      "<li>Took it the wrong way? Ctrl+Z takes placed frames back.</li>"
      "<li>To go on elsewhere, hold Ctrl and click that place of the picture, then bring it under "
      "the camera.</li></ul>"
      "<h3>Simulated microscope</h3>"
      "<p>The arrow keys move the stage, with Shift too far; or drag in the stage panel.</p>"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* column = new QVBoxLayout(&dialog);
  column->addWidget(browser);
  column->addWidget(buttons);
  dialog.resize(640, 620);
  dialog.exec();
}

}  // namespace jqscope
