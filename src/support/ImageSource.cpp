#include "support/ImageSource.h"

ImageSource::~ImageSource() = default;
