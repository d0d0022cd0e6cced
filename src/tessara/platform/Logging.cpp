#include "tessara/platform/Logging.h"

Q_LOGGING_CATEGORY(lcTessara, "com.tessara.TessaraSDK.Tessara")
Q_LOGGING_CATEGORY(lcWebSocket, "com.tessara.TessaraSDK.WebSocket")
Q_LOGGING_CATEGORY(lcVideoCapture, "com.tessara.TessaraSDK.VideoCapture")
Q_LOGGING_CATEGORY(lcSignalling, "com.tessara.TessaraSDK.Signalling")
