#ifndef JQIMAGECONVERT_H
#define JQIMAGECONVERT_H

#include <QList>
#include <QString>
#include <opencv2/core.hpp>

struct _tagJQIMG;

void ConvertJQImgToCv8UC3(_tagJQIMG* img, cv::Mat& out);
bool IsImageSizeMatched(const QList<QString>& files);

#endif  // JQIMAGECONVERT_H
