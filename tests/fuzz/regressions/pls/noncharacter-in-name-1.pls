[pâaylist0leÿÿp3
eÿÿp3
File3= ï¿¿bom.mp3e:\//tries=3
