#pragma once
// A board header that reaches up to the session and into the front end: the layer check must refuse both.
#include "session/GameSession.h"
#include "board/qt/QtPictureStrip.h"
#include "support/ZenkorModule.h"
#include "TolvaBoard.h"
