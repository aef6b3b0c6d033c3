# The common base's public headers: the export macro and the skinned-window base class.
zel_controls_public_headers(zelctl_api.h CSkinWnd.h)
