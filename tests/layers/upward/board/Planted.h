#pragma once
// A board header that reaches up to the session, into the front end and into a folder that is
// no layer: the layer check must refuse those three and let the last three pass.
#include "session/GameSession.h"
#include "board/qt/QtPictureStrip.h"
#include <extras/Helper.h>
#include "support/ZenkorModule.h"
#include "TolvaBoard.h"
#include <string>
